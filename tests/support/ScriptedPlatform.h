#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QWidget>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ErrorNumbers.h"
#include "PlatformServices.h"

namespace genvara {

/// A desktop that answers from a script and keeps what it was asked. A question without an answer left fails
/// the test and gets the mildest one.
class ScriptedPlatform final : public PlatformServices {
  public:
    /// One question or deed, as "message", "open", "save", "folder", "print", "setup", "mail", "web", "help",
    /// "closehelp", "run", "start", "end".
    struct Asked {
        std::string what;
        Message message{};
        FileRequest file{};
        std::string text{};  ///< attachment, address, help file or place, command line or rescued file
    };

    std::deque<MessageAnswer> answers;         ///< of message boxes with a choice, in order
    std::deque<std::string> files;             ///< of file and folder dialogs; "" cancels
    std::deque<std::function<void()>> during;  ///< run while a message box is up, in order
    std::function<unsigned()> dice;            ///< if set, answers that are not scripted are thrown
    std::vector<std::string> diceFiles;        ///< what a thrown file dialog may give; "" cancels
    bool mailFails = false;
    bool webFails = false;
    bool helpFails = false;
    bool printFails = false;
    bool startFails = false;
    std::optional<PrintSetup> printSetup;  ///< what the user chooses for printing; nothing cancels
    PrintSetup offered;                    ///< what he was last offered for it
    QString helpOwner;                     ///< name of the window that asked for help last
    bool clipboardHoldsText = true;
    std::vector<Asked> asked;
    std::vector<RaisedError> ends;  ///< failures that would have ended the process
    int beeps = 0;

    /// What was asked since the last call.
    std::vector<Asked> Take() { return std::exchange(asked, {}); }
    /// The one message box since the last call.
    Message TakeMessage() {
        const std::vector<Asked> all = Take();
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? Message{} : all.front().message;
    }

    MessageAnswer ShowMessage(QWidget* /*owner*/, const Message& message) override {
        asked.push_back({.what = "message", .message = message});
        if (!during.empty()) {
            const auto routine = during.front();
            during.pop_front();
            routine();
        }
        if (message.buttons == MessageButtons::Ok) {
            return MessageAnswer::Ok;
        }
        if (answers.empty() && dice) {
            constexpr std::array throws{MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel};
            return throws.at(dice() % (message.buttons == MessageButtons::YesNo ? 2U : 3U));
        }
        if (answers.empty()) {
            ADD_FAILURE() << "an unexpected question: " << message.text;
            return message.buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Cancel;
        }
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::string OpenFileName(QWidget* /*owner*/, const FileRequest& request) override {
        return AnswerFile("open", request);
    }
    std::string SaveFileName(QWidget* /*owner*/, const FileRequest& request) override {
        return AnswerFile("save", request);
    }
    std::string BrowseForFolder(QWidget* /*owner*/, const std::string& title,
                                const std::string& start) override {
        asked.push_back({.what = "folder", .file = {.title = title, .initialFolder = start}});
        return NextFile();
    }
    void Print(QWidget* /*owner*/, const std::string& title, PrintSetup& setup,
               const std::function<void(QPrinter&)>& paint) override;
    std::optional<PrintSetup> SetUpPrinter(QWidget* /*owner*/, const PrintSetup& setup,
                                           bool metric) override {
        asked.push_back({.what = "setup", .text = metric ? "mm" : "inches"});
        offered = setup;
        if (printFails) {
            throw RaisedError(482, "Printer", "Printer error");
        }
        return printSetup;
    }
    void NewMail(const std::string& attachment) override {
        asked.push_back({.what = "mail", .text = attachment});
        if (mailFails) {
            throw RaisedError(429, "Mail", "No mail program");
        }
    }
    bool ShowWebPage(const std::string& address) override {
        asked.push_back({.what = "web", .text = address});
        return !webFails;
    }
    bool ShowHelp(QWidget* owner, const std::string& file, const std::string& place) override {
        helpOwner = owner == nullptr ? QString() : owner->objectName();
        asked.push_back({.what = "help", .text = place.empty() ? file : place});
        return !helpFails;
    }
    bool CloseHelp() override {
        asked.push_back({.what = "closehelp"});
        return !helpFails;
    }
    std::optional<int> RunToEnd(const QString& commandLine) override {
        asked.push_back({.what = "run", .text = commandLine.toStdString()});
        return startFails ? std::nullopt : std::optional<int>(0);
    }
    bool Start(const QString& commandLine) override {
        asked.push_back({.what = "start", .text = commandLine.toStdString()});
        return !startFails;
    }
    void Beep() override { ++beeps; }
    [[nodiscard]] bool ClipboardHoldsText() const override { return clipboardHoldsText; }
    void EndProcess(const RaisedError& failure, const std::filesystem::path& rescued) override {
        ends.push_back(failure);
        asked.push_back({.what = "end", .text = rescued.string()});
    }

    /// PDF file that "printing" makes; none if empty.
    std::filesystem::path printFile;

  private:
    std::string NextFile() {
        if (files.empty() && dice) {
            return diceFiles.at(dice() % diceFiles.size());
        }
        if (files.empty()) {
            ADD_FAILURE() << "an unexpected file dialog";
            return {};
        }
        std::string file = files.front();
        files.pop_front();
        return file;
    }
    std::string AnswerFile(const char* what, const FileRequest& request) {
        asked.push_back({.what = what, .file = request});
        std::string file = NextFile();
        if (file.empty()) {
            throw RaisedError(errors::kDialogCancelled, "CommonDialog", "Cancel was selected.");
        }
        return file;
    }
};

}  // namespace genvara

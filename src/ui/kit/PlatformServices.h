#pragma once

#include <QString>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "PrintSetup.h"
#include "RaisedError.h"

class QPrinter;
class QWidget;

namespace genvara {

/// Picture of a message box.
enum class MessageIcon : std::uint8_t {
    None = 0,
    Stop = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64
};
enum class MessageButtons : std::uint8_t { Ok = 0, YesNoCancel = 3, YesNo = 4 };
enum class MessageAnswer : std::uint8_t { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// A message box. One without a title shows the program's name.
struct Message {
    std::string text;
    MessageIcon icon = MessageIcon::None;
    std::string title{};
    MessageButtons buttons = MessageButtons::Ok;
};

/// A file dialog.
struct FileRequest {
    std::string title;
    std::string initialName{};
    std::string initialFolder{};       ///< empty for wherever the desktop begins
    std::string defaultExtension{};    ///< with its point; added to a name without any
    std::string filter{};              ///< "Name (*.x)|*.x|All Files (*.*)|*.*", the first one chosen
    bool asksBeforeReplacing = false;  ///< a file that is there
};

/// What the windows ask of the desktop. The one real implementation talks to it; tests answer from a script
/// and look at what was asked.
class PlatformServices {
  public:
    virtual ~PlatformServices() = default;

    virtual MessageAnswer ShowMessage(QWidget* owner, const Message& message) = 0;

    /// An existing file to read.
    /// @throws RaisedError 32755 if the user cancels, as all file dialogs.
    virtual std::string OpenFileName(QWidget* owner, const FileRequest& request) = 0;
    /// A file to write.
    /// @throws RaisedError 32755 if the user cancels.
    virtual std::string SaveFileName(QWidget* owner, const FileRequest& request) = 0;
    /// A folder; empty if the user cancels.
    virtual std::string BrowseForFolder(QWidget* owner, const std::string& title,
                                        const std::string& start) = 0;

    /// Lets the user choose a printer and prints; nothing if he cancels.
    /// @param setup what the user is offered; what he chooses in its place is there before anything is
    /// painted.
    /// @throws RaisedError 482 "Printer error" if the printer does not take the pages.
    virtual void Print(QWidget* owner, const std::string& title, PrintSetup& setup,
                       const std::function<void(QPrinter&)>& paint) = 0;
    /// Lets the user choose printer, paper and margins; nothing if he cancels.
    /// @param metric whether lengths are shown in millimetres, or in inches.
    virtual std::optional<PrintSetup> SetUpPrinter(QWidget* owner, const PrintSetup& setup, bool metric) = 0;

    /// Opens a new mail with a file attached, for the user to complete.
    /// @throws RaisedError 429 if no mail program can be started.
    virtual void NewMail(const std::string& attachment) = 0;
    /// Opens a web page; false if that is not possible.
    virtual bool ShowWebPage(const std::string& address) = 0;

    /// Opens the help file; false if that is not possible.
    /// @param owner a modal dialog may own the help, which can then be read beside it.
    /// @param place page beside the file and a place on it, "site.html#defaults"; empty for the contents.
    virtual bool ShowHelp(QWidget* owner, const std::string& file, const std::string& place) = 0;
    /// Closes the help window, if there is one.
    virtual bool CloseHelp() = 0;

    /// Runs a command line to its end; its exit code, or nothing if it cannot be started.
    virtual std::optional<int> RunToEnd(const QString& commandLine) = 0;
    /// Starts a command line and returns at once; false if it cannot be started.
    virtual bool Start(const QString& commandLine) = 0;

    virtual void Beep() = 0;
    [[nodiscard]] virtual bool ClipboardHoldsText() const = 0;

    /// The end of a program that met a failure which nobody handled: reports it and ends the process, without
    /// the writes of an ordinary end. Returns in tests only.
    /// @param rescued file that holds the project as it was on screen; empty if it could not be kept.
    virtual void EndProcess(const RaisedError& failure, const std::filesystem::path& rescued) = 0;
};

}  // namespace genvara

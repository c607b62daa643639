#pragma once

#include <QPointer>
#include <QString>
#include <optional>

#include "PlatformServices.h"

namespace genvara {

class HelpWindow;

/// The desktop's own message boxes, dialogs, printers, mail and help.
class QtPlatformServices final : public PlatformServices {
  public:
    /// @param productName title of the boxes that state none.
    explicit QtPlatformServices(QString productName);
    ~QtPlatformServices() override;
    QtPlatformServices(const QtPlatformServices&) = delete;
    QtPlatformServices& operator=(const QtPlatformServices&) = delete;
    QtPlatformServices(QtPlatformServices&&) = delete;
    QtPlatformServices& operator=(QtPlatformServices&&) = delete;

    MessageAnswer ShowMessage(QWidget* owner, const Message& message) override;
    std::string OpenFileName(QWidget* owner, const FileRequest& request) override;
    std::string SaveFileName(QWidget* owner, const FileRequest& request) override;
    std::string BrowseForFolder(QWidget* owner, const std::string& title, const std::string& start) override;
    void Print(QWidget* owner, const std::string& title, PrintSetup& setup,
               const std::function<void(QPrinter&)>& paint) override;
    std::optional<PrintSetup> SetUpPrinter(QWidget* owner, const PrintSetup& setup, bool metric) override;
    void NewMail(const std::string& attachment) override;
    bool ShowWebPage(const std::string& address) override;
    bool ShowHelp(QWidget* owner, const std::string& file, const std::string& place) override;
    bool CloseHelp() override;
    std::optional<int> RunToEnd(const QString& commandLine) override;
    bool Start(const QString& commandLine) override;
    void Beep() override;
    [[nodiscard]] bool ClipboardHoldsText() const override;
    void EndProcess(const RaisedError& failure, const std::filesystem::path& rescued) override;

  private:
    QString m_productName;
    QPointer<HelpWindow> m_help;
};

}  // namespace genvara

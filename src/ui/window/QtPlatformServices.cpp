#include "QtPlatformServices.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <cstdlib>
#include <utility>

#include "ErrorNumbers.h"
#include "HelpWindow.h"
#include "PrinterLayout.h"
#include "Texts.h"
#include "frmPrintSetup.h"

namespace genvara {
namespace {

constexpr std::int32_t kNoMailProgram = 429;

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Stop:
            return QMessageBox::Critical;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case MessageButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case MessageButtons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

MessageAnswer AnswerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return MessageAnswer::Yes;
        case QMessageBox::No:
            return MessageAnswer::No;
        case QMessageBox::Cancel:
            return MessageAnswer::Cancel;
        default:
            return MessageAnswer::Ok;
    }
}

/// "Project Files (*.prj)|*.prj|All Files (*.*)|*.*" as the toolkit writes it.
QStringList NameFilters(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList names;
    for (qsizetype index = 0; index + 1 < parts.size(); index += 2) {
        const QString caption = parts[index].section('(', 0, 0).trimmed();
        const QString pattern = parts[index + 1] == "*.*" ? QString("*") : parts[index + 1];
        names.append(QString("%1 (%2)").arg(caption, pattern));
    }
    return names;
}

/// Shows a file dialog; the name chosen.
/// @throws RaisedError 32755 if there is none.
std::string Choose(QFileDialog& dialog, const FileRequest& request) {
    dialog.setWindowTitle(ToQt(request.title));
    dialog.setNameFilters(NameFilters(request.filter));
    dialog.setDefaultSuffix(ToQt(request.defaultExtension).remove('.'));
    if (!request.initialFolder.empty()) {
        dialog.setDirectory(ToQt(request.initialFolder));
    }
    if (!request.initialName.empty()) {
        dialog.selectFile(ToQt(request.initialName));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        throw RaisedError(errors::kDialogCancelled, "CommonDialog", "Cancel was selected.");
    }
    return FromQt(dialog.selectedFiles().constFirst());
}

}  // namespace

QtPlatformServices::QtPlatformServices(QString productName) : m_productName(std::move(productName)) {}

QtPlatformServices::~QtPlatformServices() {
    delete m_help;  // NOLINT(cppcoreguidelines-owning-memory): unless its owner has gone before it
}

MessageAnswer QtPlatformServices::ShowMessage(QWidget* owner, const Message& message) {
    QMessageBox box(owner);
    box.setIcon(IconOf(message.icon));
    box.setWindowTitle(message.title.empty() ? m_productName : ToQt(message.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(message.text).remove('\r'));
    box.setStandardButtons(ButtonsOf(message.buttons));
    return AnswerOf(box.exec());
}

std::string QtPlatformServices::OpenFileName(QWidget* owner, const FileRequest& request) {
    QFileDialog dialog(owner);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Choose(dialog, request);
}

std::string QtPlatformServices::SaveFileName(QWidget* owner, const FileRequest& request) {
    QFileDialog dialog(owner);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.asksBeforeReplacing);
    return Choose(dialog, request);
}

std::string QtPlatformServices::BrowseForFolder(QWidget* owner, const std::string& title,
                                                const std::string& start) {
    return FromQt(QFileDialog::getExistingDirectory(owner, ToQt(title), ToQt(start)));
}

void QtPlatformServices::Print(QWidget* owner, const std::string& title, PrintSetup& setup,
                               const std::function<void(QPrinter&)>& paint) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(ToQt(title));
    if (const QString name = ToQt(setup.printer); QPrinterInfo::availablePrinterNames().contains(name)) {
        printer.setPrinterName(name);
    }
    printer.setPageLayout(PrinterLayout(setup));
    const QPageLayout offered = printer.pageLayout();
    QPrintDialog dialog(&printer, owner);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    TakeLayout(setup, offered, printer.pageLayout());
    if (printer.outputFormat() == QPrinter::NativeFormat) {
        setup.printer = FromQt(printer.printerName());
    }
    paint(printer);
}

std::optional<PrintSetup> QtPlatformServices::SetUpPrinter(QWidget* owner, const PrintSetup& setup,
                                                           bool metric) {
    frmPrintSetup dialog(
        {.names = QPrinterInfo::availablePrinterNames(), .standard = QPrinterInfo::defaultPrinterName()},
        setup, metric, owner);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Setup()) : std::nullopt;
}

void QtPlatformServices::NewMail(const std::string& attachment) {
    const QString program = QStandardPaths::findExecutable("xdg-email");
    if (program.isEmpty() || QProcess::execute(program, {"--attach", ToQt(attachment)}) != 0) {
        throw RaisedError(kNoMailProgram, "Mail", "No mail program could be started.");
    }
}

bool QtPlatformServices::ShowWebPage(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(ToQt(address)));
}

bool QtPlatformServices::ShowHelp(QWidget* owner, const std::string& file, const std::string& place) {
    if (!m_help) {
        m_help = new HelpWindow(nullptr);  // NOLINT(cppcoreguidelines-owning-memory): its owner's, or ours
    }
    m_help->Follow(owner);
    return m_help->Show(file, place);
}

bool QtPlatformServices::CloseHelp() {
    return !m_help || m_help->close();
}

std::optional<int> QtPlatformServices::RunToEnd(const QString& commandLine) {
    QStringList words = QProcess::splitCommand(commandLine);
    if (words.isEmpty()) {
        return std::nullopt;
    }
    const QString program = words.takeFirst();
    const int status = QProcess::execute(program, words);
    return status == -2 ? std::nullopt : std::optional<int>(status);
}

bool QtPlatformServices::Start(const QString& commandLine) {
    QStringList words = QProcess::splitCommand(commandLine);
    if (words.isEmpty()) {
        return false;
    }
    const QString program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

void QtPlatformServices::Beep() {
    QApplication::beep();
}

bool QtPlatformServices::ClipboardHoldsText() const {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    return data != nullptr && data->hasText();
}

void QtPlatformServices::EndProcess(const RaisedError& failure, const std::filesystem::path& rescued) {
    const QString kept =
        rescued.empty()
            ? QApplication::translate("EndProcess", "The project could not be kept.")
            : QApplication::translate("EndProcess", "The project as it was on screen is kept in\n") +
                  ToQt(rescued.string());
    const QString text =
        QApplication::translate("EndProcess", "Run-time error %1:\n\n%2\n\n%3\n\nThe program ends.")
            .arg(failure.Number())
            .arg(ToQt(failure.Description()), kept);
    // As plain text: a file's name is no markup.
    ShowMessage(nullptr, {.text = FromQt(text), .icon = MessageIcon::Stop});
    // Without destructors: nothing that the failure may have left in disorder is written.
    std::_Exit(EXIT_FAILURE);
}

}  // namespace genvara

#include "frmErrLog.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "FormGrid.h"
#include "Texts.h"

namespace genvara {

frmErrLog::frmErrLog(ErrorLog& log, QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_log(&log),
      m_txtLog(new QPlainTextEdit),
      m_chkLogFile(new QCheckBox("Log to File")) {
    setObjectName("frmErrLog");
    setWindowTitle("Error/Debug Log");
    m_txtLog->setObjectName("txtLog");
    m_txtLog->setAccessibleName(windowTitle());
    m_txtLog->setReadOnly(true);
    m_chkLogFile->setObjectName("chkLogFile");
    m_chkLogFile->setChecked(log.LogToFile());
    const auto button = [](const char* name, const char* caption) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        return made;
    };
    auto* clear = button("cmdClear", "&Clear Log");
    auto* leave = button("cmdExit", "E&xit");
    auto* line = new QHBoxLayout;
    line->addWidget(m_chkLogFile);
    line->addStretch(1);
    line->addWidget(clear);
    line->addWidget(button("cmdSave", "&Save"));
    line->addWidget(button("cmdPrint", "&Print"));
    line->addWidget(leave);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->addWidget(m_txtLog, 1);
    column->addLayout(line);
    connect(m_chkLogFile, &QCheckBox::toggled, this, [this](bool on) { m_log->LogToFile(on); });
    connect(clear, &QPushButton::clicked, this, [this] {
        m_log->Clear();
        ShowLog();
    });
    connect(leave, &QPushButton::clicked, this, &QWidget::close);
    ShowLog();
}

void frmErrLog::LogError(const std::string& message) {
    m_log->LogError(message);
    ShowLog();
}

void frmErrLog::LogDebug(const std::string& message) {
    m_log->LogDebug(message);
    ShowLog();
}

void frmErrLog::ShowLog() {
    m_txtLog->setPlainText(ToQt(m_log->Text()));
    m_txtLog->moveCursor(QTextCursor::End);
}

}  // namespace genvara

#pragma once

#include <QWidget>
#include <string>

#include "ErrorLog.h"

class QCheckBox;
class QPlainTextEdit;

namespace genvara {

/// The log of errors and debug texts. Nothing in the program opens it; it stands ready for debugging.
class frmErrLog final : public QWidget {
    Q_OBJECT

  public:
    /// The log outlives the window.
    explicit frmErrLog(ErrorLog& log, QWidget* parent = nullptr);

    // Entry points of whoever has something to log.
    // @throws RaisedError with the system's number from "ErrorLog" if the file is wanted and cannot be
    // written.
    void LogError(const std::string& message);
    void LogDebug(const std::string& message);

  private:
    void ShowLog();

    ErrorLog* m_log;
    QPlainTextEdit* m_txtLog;
    QCheckBox* m_chkLogFile;
};

}  // namespace genvara

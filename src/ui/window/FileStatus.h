#pragma once

#include <QWidget>
#include <string>

class QLabel;

namespace genvara {

/// The project's file, for the right end of the status bar: its name, a mark where something was entered that
/// it does not hold, and whether the last save failed.
class FileStatus final : public QWidget {
    Q_OBJECT

  public:
    explicit FileStatus(QWidget* parent = nullptr);

    /// @param file full name; empty for a project that was never saved or opened.
    void Show(const std::string& file, bool changed);
    /// Says "Not saved" with the reason as a tip; an empty reason takes it back.
    void NotSaved(const std::string& reason);

  private:
    QLabel* m_lblNotSaved;
    QLabel* m_lblFile;
};

}  // namespace genvara

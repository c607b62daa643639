#pragma once

#include <QMainWindow>
#include <string>

class QTextBrowser;

namespace genvara {

/// Shows the help file: a page with links, back and forward, and a search.
class HelpWindow final : public QMainWindow {
    Q_OBJECT

  public:
    explicit HelpWindow(QWidget* owner);

    /// Makes another window the owner: a modal dialog lets nothing but its own windows be used. When it ends,
    /// the help is its owner's.
    void Follow(QWidget* owner);

    /// Shows a help file; false if it cannot be read.
    /// @param place page beside the file and a place on it; empty for the file from its beginning.
    bool Show(const std::string& file, const std::string& place = {});

  private:
    void BuildToolbar();
    void Find(const QString& text);

    QTextBrowser* m_page;
};

}  // namespace genvara

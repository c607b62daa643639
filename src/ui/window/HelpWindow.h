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

    /// Shows a help file from its beginning; false if it cannot be read.
    bool Show(const std::string& file);

  private:
    void BuildToolbar();
    void Find(const QString& text);

    QTextBrowser* m_page;
};

}  // namespace genvara

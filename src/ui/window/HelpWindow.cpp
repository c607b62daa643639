#include "HelpWindow.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QShortcut>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

#include "Texts.h"

namespace genvara {
namespace {

constexpr QSize kSize(820, 640);  // pixels
constexpr int kFindWidth = 220;   // pixels

}  // namespace

HelpWindow::HelpWindow(QWidget* owner) : QMainWindow(owner), m_page(new QTextBrowser) {
    setObjectName("helpWindow");
    setWindowTitle(tr("Help"));
    resize(kSize);
    m_page->setObjectName("helpPage");
    m_page->setOpenExternalLinks(true);
    m_page->setAccessibleName(tr("Help"));
    setCentralWidget(m_page);
    BuildToolbar();
}

void HelpWindow::BuildToolbar() {
    QToolBar* bar = addToolBar(tr("Help"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    QAction* back = bar->addAction(tr("Back"), m_page, &QTextBrowser::backward);
    back->setShortcut(QKeySequence::Back);
    back->setEnabled(false);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    QAction* forward = bar->addAction(tr("Forward"), m_page, &QTextBrowser::forward);
    forward->setShortcut(QKeySequence::Forward);
    forward->setEnabled(false);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    bar->addAction(tr("Contents"), m_page, &QTextBrowser::home);
    auto* find = new QLineEdit;
    find->setObjectName("txtFind");
    find->setPlaceholderText(tr("Find in the help"));
    find->setAccessibleName(find->placeholderText());
    find->setClearButtonEnabled(true);
    find->findChild<QToolButton*>()->setAccessibleName(tr("Clear"));
    find->setMaximumWidth(kFindWidth);
    bar->addSeparator();
    bar->addWidget(find);
    connect(find, &QLineEdit::returnPressed, this, [this, find] { Find(find->text()); });
    auto* findKey = new QShortcut(QKeySequence::Find, this);
    connect(findKey, &QShortcut::activated, find, [find] { find->setFocus(); });
    auto* closeKey = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(closeKey, &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::Follow(QWidget* owner) {
    if (owner == parentWidget()) {
        return;
    }
    const bool visible = isVisible();
    setParent(owner, windowFlags());
    setVisible(visible);
    if (const auto* dialog = qobject_cast<QDialog*>(owner)) {
        connect(dialog, &QDialog::finished, this, [this, dialog] {
            if (parentWidget() == dialog) {
                Follow(dialog->parentWidget());
            }
        });
    }
}

bool HelpWindow::Show(const std::string& file, const std::string& place) {
    const QString page = ToQt(place).section('#', 0, 0);
    const QString name = page.isEmpty() ? ToQt(file) : QFileInfo(ToQt(file)).dir().filePath(page);
    if (!QFileInfo(name).isReadable() || !QFileInfo(name).isFile()) {
        return false;
    }
    // Before the page, whose places lie where the window's width puts them.
    show();
    raise();
    activateWindow();
    QUrl url = QUrl::fromLocalFile(name);
    url.setFragment(ToQt(place).section('#', 1));
    // The name says nothing of what is in it: the pages are HTML.
    m_page->setSource(url, QTextDocument::HtmlResource);
    return true;
}

void HelpWindow::Find(const QString& text) {
    if (!text.isEmpty() && !m_page->find(text)) {
        m_page->moveCursor(QTextCursor::Start);
        m_page->find(text);
    }
}

}  // namespace genvara

// The manual in the window that shows it: every page and picture comes up, and every link leads on.

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTextFragment>
#include <QTreeWidget>

#include "EntryField.h"
#include "HelpWindow.h"
#include "PictureTest.h"

namespace genvara {
namespace {

constexpr QSize kSize(980, 540);  // pixels; small, so that pictures stay legible when they are scaled down

/// What a page holds: where its links lead, and its pictures' names.
struct PageContents {
    QStringList links;
    QStringList pictures;
};

PageContents ContentsOf(const QTextDocument& page) {
    PageContents contents;
    for (QTextBlock block = page.begin(); block != page.end(); block = block.next()) {
        for (auto part = block.begin(); part != block.end(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (format.isAnchor() && !format.anchorHref().isEmpty()) {
                contents.links += format.anchorHref();
            }
            if (format.isImageFormat()) {
                contents.pictures += format.toImageFormat().name();
            }
        }
    }
    return contents;
}

class ManualTest : public testing::Test {
  protected:
    ManualTest() : m_window(nullptr), m_page(Find<QTextBrowser>(m_window, "helpPage")) {}

    [[nodiscard]] static QString Folder() { return GENVARA_TEST_HELP; }
    [[nodiscard]] HelpWindow& Window() { return m_window; }
    [[nodiscard]] QTextBrowser& Page() { return m_page; }
    bool ShowEntry() { return m_window.Show((Folder() + "/Helpfile.hlp").toStdString()); }

  private:
    HelpWindow m_window;
    QTextBrowser& m_page;
};

TEST_F(ManualTest, EveryPageIsReachedFromItsEntryAndShowsItsPictures) {
    ASSERT_TRUE(ShowEntry());
    QStringList waiting{"index.html"};
    QStringList seen;
    int pictures = 0;
    while (!waiting.isEmpty()) {
        const QString name = waiting.takeFirst();
        seen += name;
        Page().setSource(QUrl(name));
        ASSERT_EQ(Page().source().fileName(), name);
        EXPECT_GT(Page().document()->characterCount(), 500) << name.toStdString();
        const PageContents contents = ContentsOf(*Page().document());
        for (const QString& picture : contents.pictures) {
            const QVariant shown = Page().document()->resource(QTextDocument::ImageResource, QUrl(picture));
            EXPECT_FALSE(shown.value<QImage>().isNull() && shown.toByteArray().isEmpty())
                << name.toStdString() << ": " << picture.toStdString();
            ++pictures;
        }
        for (const QString& link : contents.links) {
            const QString page = link.section('#', 0, 0);
            if (page.endsWith(".html") && !seen.contains(page) && !waiting.contains(page)) {
                waiting += page;
            }
        }
    }
    seen.sort();
    EXPECT_EQ(seen, QDir(Folder()).entryList({"*.html"}, QDir::Files, QDir::Name));
    EXPECT_GE(pictures, 5);
}

TEST_F(ManualTest, TheEntryIsAPageAlsoWhenContentsReturnsToIt) {
    ASSERT_TRUE(ShowEntry());
    const QString entry = Page().toPlainText();
    EXPECT_FALSE(entry.contains('<'));
    Page().setSource(QUrl("keys.html"));
    EXPECT_NE(Page().toPlainText(), entry);
    for (QAction* action : Window().findChildren<QAction*>()) {
        if (action->text() == "Contents") {
            action->trigger();
        }
    }
    EXPECT_EQ(Page().toPlainText(), entry);
}

TEST_F(ManualTest, PagesFitTheWindowInWidth) {
    ASSERT_TRUE(ShowEntry());
    for (const QString& name : QDir(Folder()).entryList({"*.html"}, QDir::Files)) {
        Page().setSource(QUrl(name));
        Page().document()->setTextWidth(Page().viewport()->width());
        EXPECT_LE(Page().document()->size().width(), Page().viewport()->width()) << name.toStdString();
    }
}

/// Pictures for the manual, and of its pages, for people to look at: the folder is named by GENVARA_PICTURES.
class ManualPictures : public PictureTest {};

TEST_F(ManualPictures, OfTheFirstProject) {
    Window().resize(kSize);
    Open(std::filesystem::path(GENVARA_TEST_HELP) / "first-project.prj");
    Bar(1);
    Save(Window(), "site");
    Bar(2);
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    tree.setCurrentItem(tree.topLevelItem(1)->child(0));
    Save(Window(), "profile");
    InNextDialog([this](QDialog& dialog) { Save(dialog, "motor"); });
    Click(Window(), "cmdEdit");
    tree.setCurrentItem(tree.topLevelItem(0));
    InNextDialog([this](QDialog& dialog) { Save(dialog, "add-load"); });
    Click(Window(), "cmdAddLoad");
    Bar(3);
    auto& report = Control<QAbstractScrollArea>("panRecommend", "rtfRecommend");
    report.verticalScrollBar()->setValue(report.verticalScrollBar()->maximum() / 2);
    Save(Window(), "gensets");
    Click(Window(), "chkRejectedGensets");
    report.verticalScrollBar()->setValue(report.verticalScrollBar()->maximum() * 2 / 3);
    Save(Window(), "undersized");
    InNextDialog([this](QDialog& dialog) { Save(dialog, "options"); });
    Run("mnuToolsOptions");
}

TEST_F(ManualPictures, OfThePages) {
    HelpWindow help(nullptr);
    ASSERT_TRUE(help.Show(GENVARA_TEST_HELP "/Helpfile.hlp"));
    auto& page = Find<QTextBrowser>(help, "helpPage");
    page.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const QString& name : QDir(GENVARA_TEST_HELP).entryList({"*.html"}, QDir::Files)) {
        page.setSource(QUrl(name));
        help.resize(help.width(), qRound(page.document()->size().height()) + 80);
        Save(help, "page-" + name.section('.', 0, 0));
    }
}

}  // namespace
}  // namespace genvara

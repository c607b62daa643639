// What all dialogs of the main window have in common.

#include <QAccessible>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>
#include <map>

#include "EntryField.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

class AllDialogs : public WindowTest {
  protected:
    void SetUp() override {
        AddStepWithLoad();
        platform.Take();
    }
    struct Opener {
        const char* dialog;
        std::function<void()> open;
    };
    std::vector<Opener> Dialogs() {
        const auto onTheProfile = [this](const char* button) {
            return [this, button] {
                Bar(2);
                auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
                tree.setCurrentItem(tree.topLevelItem(0));
                Click(Window(), button);
            };
        };
        return {{"frmOptions", [this] { Run("mnuToolsOptions"); }},
                {"frmDefaults", [this] { Run("mnuToolsDefaults"); }},
                {"frmAbout", [this] { Run("mnuHelpAbout"); }},
                {"frmRecover", [this] { Run("mnuFileRecover"); }},
                {"frmImport", [this] { Window().PasteTable("Type\tkW\nMisc\t5\nMisc\tmuch\n"); }},
                {"frmAddStep", onTheProfile("cmdAddStep")},
                {"frmEditStep", onTheProfile("cmdEdit")},
                {"frmAddLoad", onTheProfile("cmdAddLoad")}};
    }
    void ForEach(const std::function<void(QDialog&)>& look) {
        for (const Opener& opener : Dialogs()) {
            SCOPED_TRACE(opener.dialog);
            bool looked = false;
            InNextDialog([&](QDialog& dialog) {
                looked = true;
                EXPECT_EQ(dialog.objectName(), opener.dialog);
                QApplication::setActiveWindow(&dialog);
                look(dialog);
            });
            opener.open();
            EXPECT_TRUE(looked);
        }
    }
    /// Every page of a dialog in turn; the dialog itself where it has none.
    static void ForEachPage(QDialog& dialog, const std::function<void()>& look) {
        auto* pages = dialog.findChild<QTabWidget*>();
        for (int page = 0; page < (pages == nullptr ? 1 : pages->count()); ++page) {
            if (pages != nullptr) {
                pages->setCurrentIndex(page);
            }
            look();
        }
    }
    static bool TakesTab(const QWidget& widget) {
        return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr &&
               widget.isVisible() && widget.isEnabled();
    }
};

TEST_F(AllDialogs, EveryControlHasAWordForReaders) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            for (QWidget* widget : dialog.findChildren<QWidget*>()) {
                if (TakesTab(*widget)) {
                    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
                    ASSERT_NE(reader, nullptr);
                    const QString name = reader->text(QAccessible::Name);
                    EXPECT_FALSE(name.isEmpty()) << widget->objectName().toStdString();
                    EXPECT_FALSE(name.contains('&')) << name.toStdString();
                }
            }
        });
    });
}

TEST_F(AllDialogs, NoTwoCaptionsShareAKey) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            std::map<QString, QString> keys;
            const auto use = [&keys](const QString& caption) {
                const qsizetype mark = caption.indexOf('&');
                if (mark >= 0) {
                    const auto [place, fresh] = keys.emplace(caption.mid(mark + 1, 1).toUpper(), caption);
                    EXPECT_TRUE(fresh)
                        << caption.toStdString() << " and " << place->second.toStdString() << " share a key";
                }
            };
            for (const auto* label : dialog.findChildren<QLabel*>()) {
                if (label->isVisible() && label->buddy() != nullptr) {
                    use(label->text());
                }
            }
            for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
                if (button->isVisible()) {
                    use(button->text());
                }
            }
        });
    });
}

TEST_F(AllDialogs, TabFollowsTheLayout) {
    ForEach([](QDialog& dialog) {
        ForEachPage(dialog, [&dialog] {
            constexpr int kOneLine = 12;  // pixels between the middles of what stands in one line
            constexpr int kColumn = 200;  // and in two columns
            std::vector<QWidget*> stops;
            for (QWidget* widget = dialog.nextInFocusChain(); widget != &dialog;
                 widget = widget->nextInFocusChain()) {
                if (TakesTab(*widget) && dialog.isAncestorOf(widget)) {
                    stops.push_back(widget);
                }
            }
            ASSERT_GE(stops.size(), 2U);
            for (std::size_t stop = 1; stop < stops.size(); ++stop) {
                const auto middle = [&dialog](const QWidget* widget) {
                    return widget->mapTo(&dialog, widget->rect().center());
                };
                const QPoint from = middle(stops[stop - 1]);
                const QPoint to = middle(stops[stop]);
                const bool oneLine = std::abs(to.y() - from.y()) <= kOneLine;
                const bool nextColumn = to.x() - from.x() > kColumn;
                EXPECT_TRUE(oneLine ? to.x() > from.x() : to.y() > from.y() || nextColumn)
                    << stops[stop - 1]->objectName().toStdString() << " before "
                    << stops[stop]->objectName().toStdString();
            }
        });
    });
}

TEST_F(AllDialogs, EscapeClosesWithoutWriting) {
    const CLoadStep& step = App().LoadProfile().LoadStep(1);
    ForEach([this](QDialog& dialog) {
        for (auto* field : dialog.findChildren<EntryField*>()) {
            if (!field->isReadOnly()) {
                field->setText("7");
            }
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.result(), QDialog::Rejected);
        EXPECT_TRUE(platform.Take().empty());
    });
    EXPECT_EQ(App().Designer().MaxLoading(), 80);
    EXPECT_EQ(App().Designer().MaxSetsRecommended(), 16);
    EXPECT_EQ(App().ProjectPath(), "");
    EXPECT_EQ(App().Defaults().UserName(), "");
    EXPECT_EQ(App().Defaults().NumParallelSets(), 1);
    EXPECT_EQ(App().LoadProfile().NumLoadSteps(), 1);
    EXPECT_EQ(step.Description(), "Step");
    EXPECT_EQ(step.NumLoads(), 1);
}

TEST_F(AllDialogs, EnterIsOk) {
    ForEach([](QDialog& dialog) {
        if (dialog.objectName() == "frmRecover" || dialog.objectName() == "frmImport") {
            return;  // there is nothing to restore or to import, and their buttons are called otherwise
        }
        bool pressed = false;
        auto& ok = Find<QPushButton>(dialog, "cmdOK");
        EXPECT_TRUE(ok.isDefault());
        QObject::connect(&ok, &QPushButton::pressed, [&pressed] { pressed = true; });
        ok.disconnect(SIGNAL(clicked(bool)));  // what it does is tested elsewhere
        if (auto* list = dialog.findChild<QListWidget*>()) {
            list->setCurrentRow(0);  // OK waits for a choice
        }
        QWidget* at = QApplication::focusWidget();
        ASSERT_NE(at, nullptr) << "the focus is where the next entry is";
        QTest::keyClick(at, Qt::Key_Return);
        EXPECT_TRUE(pressed);
    });
}

}  // namespace
}  // namespace genvara

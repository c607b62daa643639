// Somebody who presses everything: thousands of random commands, clicks and texts over the whole window, with
// random answers. Nothing may crash or hang, and what the panels show has to be what the model holds.

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <array>
#include <random>

#include "Globals.h"
#include "WindowFixture.h"
#include "ctlSideBar.h"

namespace genvara {
namespace {

constexpr int kActions = 5600;
constexpr int kActionsInDialog = 12;
/// What fingers type into fields: numbers, borders of ranges, rubbish.
constexpr std::array<const char*, 14> kTexts{
    "",    "0",    "1",           "5",  "007", "20",  "36",
    "100", "4572", "99999999999", "-3", "1.5", "abc", " \xC3\xA9\xE2\x82\xAC\""};

class Monkey : public WindowTest {
  protected:
    void SetUp() override {
        platform.dice = [this] { return Throw(1U << 30U); };
        // Copies, since the monkey saves over what it opens.
        std::filesystem::copy_file(Sample("farm.prj"), folder / "farm.prj");
        WriteOddFiles();
        platform.diceFiles = {"",
                              (folder / "garbage.prj").string(),
                              (folder / "foreign.prj").string(),
                              (folder / "impossible.prj").string(),
                              (folder / "a.prj").string(),
                              (folder / "b.prj").string(),
                              (folder / "missing/c.prj").string(),
                              (folder / "farm.prj").string(),
                              (folder / "r.rtf").string()};
        Watch();
    }
    void TearDown() override { m_over = true; }

    /// A file that is no project, a project of another catalogue, and one with a motor that cannot be worked
    /// out: its starting power factor is above 1.
    void WriteOddFiles() {
        const auto project = [](const std::string& connection, const std::string& volts,
                                const std::string& motorPF) {
            return "8,0,0,1\r\n#2026-01-02 03:04:05#,\"\",\"\",#2026-01-02 03:04:05#,\"Odd\",\"\"\r\n0,25," +
                   connection + ",60,1,1\r\n20,#FALSE#,15,#FALSE#\r\n20,3,3," + volts +
                   "\r\n1\r\n\"A\",15\r\n" +
                   "1\r\n1,5,\"Pump\",\"\",1,0\r\n0,\"F\",1,#TRUE#,#FALSE#\r\n25\r\n132500," + motorPF +
                   ",300\r\n";
        };
        WriteBytes(folder / "garbage.prj", "Dear diary");
        WriteBytes(folder / "foreign.prj", project("77", "347", "0.4"));
        WriteBytes(folder / "impossible.prj", project("1", "480", "1.2"));
    }

    /// A project with all that there is to press on.
    void Begin() {
        platform.ends.clear();
        platform.files.clear();
        g_ProjectDirty = false;
        Run("mnuFileNew");
        std::filesystem::copy_file(Sample("hospital.prj"), folder / "hospital.prj",
                                   std::filesystem::copy_options::overwrite_existing);
        Open(folder / "hospital.prj");
    }

    unsigned Throw(unsigned sides) { return std::uniform_int_distribution<unsigned>(0, sides - 1)(m_dice); }

    template <typename Items>
    auto Any(const Items& items) {
        return items.at(static_cast<decltype(items.size())>(Throw(static_cast<unsigned>(items.size()))));
    }

    /// Acts in whatever dialog is up, and closes it after a while.
    void Watch() {
        QTimer::singleShot(0, &Window(), [this] {
            if (m_over) {
                return;
            }
            Watch();  // first, since what follows may open another dialog
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (QWidget* popup = QApplication::activePopupWidget()) {
                popup->close();
            } else if (dialog != nullptr && ++m_inDialog % kActionsInDialog == 0) {
                dialog->reject();
            } else if (dialog != nullptr) {
                ActIn(*dialog);
            }
        });
    }

    void ActIn(QWidget& where) {
        switch (Throw(6)) {
            case 0:
            case 1:
                TypeSomething(where);
                break;
            case 2:
            case 3:
                PressSomething(where);
                break;
            case 4:
                ChooseSomething(where);
                break;
            default:
                HitAKey(where);
        }
    }

    void TypeSomething(QWidget& where) {
        const auto fields = where.findChildren<QLineEdit*>();
        if (fields.isEmpty()) {
            return;
        }
        QLineEdit* field = Any(fields);
        if (!field->isVisible() || !field->isEnabled()) {
            return;
        }
        field->setFocus();
        field->selectAll();
        if (Throw(2) == 0) {
            field->insert(kTexts[Throw(kTexts.size())]);  // as if pasted
        } else {
            for (const QChar& character : QString::fromUtf8(kTexts[Throw(kTexts.size())])) {
                QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
                QApplication::sendEvent(field, &press);
            }
        }
    }

    void PressSomething(QWidget& where) {
        QList<QAbstractButton*> buttons;
        for (QAbstractButton* button : where.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->isEnabled()) {
                buttons.append(button);
            }
        }
        if (!buttons.isEmpty()) {
            QTest::mouseClick(Any(buttons), Qt::LeftButton);
        }
    }

    void ChooseSomething(QWidget& where) {
        for (QComboBox* list : where.findChildren<QComboBox*>()) {
            if (list->isVisible() && list->count() > 0 && Throw(3) == 0) {
                QTest::keyClick(list, Throw(2) == 0 ? Qt::Key_Down : Qt::Key_Up);
            }
        }
        for (QListWidget* list : where.findChildren<QListWidget*>()) {
            list->setCurrentRow(static_cast<int>(Throw(static_cast<unsigned>(list->count()))));
        }
        for (QTreeWidget* tree : where.findChildren<QTreeWidget*>()) {
            if (tree->isVisible() && tree->topLevelItemCount() > 0) {
                QTreeWidgetItem* step = tree->topLevelItem(
                    static_cast<int>(Throw(static_cast<unsigned>(tree->topLevelItemCount()))));
                const bool load = step->childCount() > 0 && Throw(2) == 0;
                tree->setCurrentItem(
                    load ? step->child(static_cast<int>(Throw(static_cast<unsigned>(step->childCount()))))
                         : step);
            }
        }
    }

    void HitAKey(QWidget& where) {
        constexpr std::array<Qt::Key, 9> kKeys{Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Return,
                                               Qt::Key_Escape, Qt::Key_Up,      Qt::Key_Down,
                                               Qt::Key_Delete, Qt::Key_Space,   Qt::Key_PageDown};
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus == nullptr ? &where : focus, kKeys[Throw(kKeys.size())]);
    }

    void RunSomething() {
        const auto actions = Window().findChildren<QAction*>();
        QAction* action = Any(actions);
        if (!action->isSeparator() && action->menu() == nullptr) {
            action->trigger();
        }
        if (!Window().isVisible()) {
            Window().show();  // the exit command: come back
        }
    }

    /// The nodes of the tree and the steps and loads of the profile, as one text each.
    void ExpectTreeShowsTheProfile() {
        const auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
        std::string shown;
        for (int step = 0; step < tree.topLevelItemCount(); ++step) {
            shown += "/" + tree.topLevelItem(step)->text(0).toStdString();
            for (int load = 0; load < tree.topLevelItem(step)->childCount(); ++load) {
                shown += "|" + tree.topLevelItem(step)->child(load)->text(0).toStdString();
            }
        }
        std::string held;
        for (const CLoadStep& step : App().LoadProfile()) {
            held += "/" + step.Description();
            for (const Load& load : step) {
                held += "|" + load.name();
            }
        }
        ASSERT_EQ(shown, held);
    }

    void ExpectPanelsShowTheProject() {
        ASSERT_EQ(Control<QLineEdit>("panProject", "txtName").text().toStdString(),
                  App().Project().ProjName());
        ASSERT_EQ(Control<QLineEdit>("panProject", "txtCustomer").text().toStdString(),
                  App().Project().Customer());
    }

    int m_inDialog = 0;
    int m_sized = 0;

  private:
    std::mt19937 m_dice{20260304};
    bool m_over = false;
};

TEST_F(Monkey, FindsNothingThatCrashesOrTellsTwoStories) {
    Begin();
    for (int action = 0; action < kActions; ++action) {
        SCOPED_TRACE(action);
        const unsigned kind = Throw(8);
        if (kind < 2) {
            Bar(static_cast<int>(Throw(4)));
        } else if (kind < 3) {
            RunSomething();
        } else {
            ActIn(*Window().centralWidget());
        }
        QCoreApplication::processEvents();
        m_sized += ShownPanel() == "panRecommend" ? 1 : 0;
        ASSERT_THAT(platform.ends, testing::IsEmpty());
        if (App().LoadProfile().NumLoadSteps() == 0 && Throw(20) == 0) {
            Begin();
        }
        ASSERT_NO_FATAL_FAILURE(ExpectTreeShowsTheProfile());
        if (action % 50 == 49) {
            platform.Take();
            // A store brings the panels into the records, unless a field is bad.
            try {
                Window().SideBarClicked(static_cast<std::int32_t>(Throw(3)));
                ASSERT_NO_FATAL_FAILURE(ExpectPanelsShowTheProject());
            } catch (const RaisedError& failure) {
                EXPECT_EQ(failure.Source(), "panPwrSys::Store");
                Begin();
            }
        }
    }
    EXPECT_GT(m_sized, 20) << "the dice never came to the recommendations";
    EXPECT_GT(m_inDialog, 500) << "the dice never came to the dialogs";
}

}  // namespace
}  // namespace genvara

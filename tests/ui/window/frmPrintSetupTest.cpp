// The dialog of printer, paper and margins, and what the desktop's print dialogs change of them.

#include "frmPrintSetup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QAccessible>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QWheelEvent>
#include <set>

#include "ChoiceBox.h"
#include "PrinterLayout.h"

namespace genvara {
namespace {

using testing::ElementsAre;

/// A4 on its side; every length is another.
PrintSetup SomeSetup() {
    return {.printer = "Plotter",
            .width = 16838,
            .height = 11906,
            .left = 900,
            .right = 800,
            .top = 700,
            .bottom = 600};
}

class PrintSetupDialog : public testing::Test {
  protected:
    explicit PrintSetupDialog(bool metric = true) : m_metric(metric) {}

    frmPrintSetup& Show(const PrintSetup& setup = {}, const QStringList& names = {"Laser", "Plotter"},
                        const QString& standard = "Laser") {
        m_dialog = std::make_unique<frmPrintSetup>(
            frmPrintSetup::Printers{.names = names, .standard = standard}, setup, m_metric, nullptr);
        m_dialog->show();
        QApplication::setActiveWindow(m_dialog.get());
        QApplication::processEvents();
        return *m_dialog;
    }
    template <typename Widget>
    [[nodiscard]] Widget& Control(const char* name) {
        auto* found = m_dialog->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    [[nodiscard]] QDoubleSpinBox& Margin(const char* name) { return Control<QDoubleSpinBox>(name); }
    /// Types a number over what stands in a field, and leaves it.
    void Type(const char* name, const QString& text) {
        QDoubleSpinBox& box = Margin(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        Control<ChoiceBox>("cboPrinter").setFocus();
    }
    std::vector<std::string> Rows(const char* name) {
        std::vector<std::string> rows;
        for (int row = 0; row < Control<ChoiceBox>(name).count(); ++row) {
            rows.push_back(Control<ChoiceBox>(name).itemText(row).toStdString());
        }
        return rows;
    }

    bool m_metric;
    std::unique_ptr<frmPrintSetup> m_dialog;
};

class PrintSetupInInches : public PrintSetupDialog {
  protected:
    PrintSetupInInches() : PrintSetupDialog(false) {}
};

TEST_F(PrintSetupDialog, ShowsWhatItIsGiven) {
    Show(SomeSetup());
    EXPECT_EQ(Control<ChoiceBox>("cboPrinter").currentText(), "Plotter");
    EXPECT_EQ(Control<ChoiceBox>("cboPaper").currentText(), "A4 (210 x 297 mm)");
    EXPECT_TRUE(Control<QRadioButton>("optLandscape").isChecked());
    // 900 / 1440 * 25.4 = 15.875, 800: 14.11, 700: 12.35, 600: 10.58.
    EXPECT_DOUBLE_EQ(Margin("txtLeftMargin").value(), 15.9);
    EXPECT_DOUBLE_EQ(Margin("txtRightMargin").value(), 14.1);
    EXPECT_DOUBLE_EQ(Margin("txtTopMargin").value(), 12.3);
    EXPECT_DOUBLE_EQ(Margin("txtBottomMargin").value(), 10.6);
    EXPECT_EQ(m_dialog->Setup(), SomeSetup()) << "what is shown shorter is kept in full";
}

TEST_F(PrintSetupInInches, ShowsInches) {
    Show({.left = 1440, .right = 1080, .top = 720, .bottom = 900});
    EXPECT_DOUBLE_EQ(Margin("txtLeftMargin").value(), 1.0);
    EXPECT_DOUBLE_EQ(Margin("txtRightMargin").value(), 0.75);
    EXPECT_DOUBLE_EQ(Margin("txtTopMargin").value(), 0.5);
    EXPECT_DOUBLE_EQ(Margin("txtBottomMargin").value(), 0.63);  // 0.625
    Type("txtBottomMargin", "1.25");
    EXPECT_EQ(m_dialog->Setup().bottom, 1800);
    EXPECT_EQ(m_dialog->Setup().top, 720);
}

TEST_F(PrintSetupDialog, OffersThePrintersThatAreThere) {
    Show();
    EXPECT_THAT(Rows("cboPrinter"), ElementsAre("Default printer (Laser)", "Laser", "Plotter"));
    Control<ChoiceBox>("cboPrinter").SelectRow(2);
    EXPECT_EQ(m_dialog->Setup().printer, "Plotter");
    Control<ChoiceBox>("cboPrinter").SelectRow(0);
    EXPECT_EQ(m_dialog->Setup().printer, "");
}

TEST_F(PrintSetupDialog, KeepsAPrinterThatIsSwitchedOff) {
    Show({.printer = "Gone"}, {"Laser"}, "");
    EXPECT_THAT(Rows("cboPrinter"), ElementsAre("Default printer", "Laser", "Gone (not available)"));
    EXPECT_EQ(Control<ChoiceBox>("cboPrinter").currentIndex(), 2);
    EXPECT_EQ(m_dialog->Setup().printer, "Gone");
}

TEST_F(PrintSetupDialog, SaysThatThereIsNoPrinter) {
    Show({}, {}, "");
    EXPECT_THAT(Rows("cboPrinter"), ElementsAre("No printer is installed"));
}

TEST_F(PrintSetupDialog, TakesPaperOrientationAndMargins) {
    Show({.printer = "Laser"});
    Control<ChoiceBox>("cboPaper").SelectRow(5);
    Control<QRadioButton>("optLandscape").click();
    Type("txtLeftMargin", "11");
    Type("txtRightMargin", "12.5");
    Type("txtTopMargin", "13");
    Type("txtBottomMargin", "14");
    // 210 mm are 11905.5 twips, 148 mm 8390.6; 11 mm 623.6, 12.5 mm 708.7, 13 mm 737.0, 14 mm 793.7.
    EXPECT_EQ(m_dialog->Setup(), (PrintSetup{.printer = "Laser",
                                             .width = 11906,
                                             .height = 8391,
                                             .left = 624,
                                             .right = 709,
                                             .top = 737,
                                             .bottom = 794}));
    Control<QRadioButton>("optPortrait").click();
    EXPECT_EQ(m_dialog->Setup().width, 8391);
    EXPECT_EQ(m_dialog->Setup().height, 11906);
}

TEST_F(PrintSetupDialog, KeepsAPaperThatIsNotListed) {
    Show({.width = 13000, .height = 15000});
    EXPECT_EQ(Control<ChoiceBox>("cboPaper").currentText(), "As before");
    EXPECT_EQ(m_dialog->Setup().width, 13000);
    Control<ChoiceBox>("cboPaper").SelectRow(4);
    EXPECT_EQ(m_dialog->Setup().width, 11906);
}

TEST_F(PrintSetupDialog, RefusesMarginsThatLeaveNoRoomForTheText) {
    Show();
    // Letter is 215.9 mm wide; 88.9 for the text and 19.05 on the other side leave 107.95.
    EXPECT_DOUBLE_EQ(Margin("txtLeftMargin").maximum(), 107.9);
    EXPECT_DOUBLE_EQ(Margin("txtLeftMargin").minimum(), 5.0);
    // 279.4 less 63.5 and 12.7 are 203.2.
    EXPECT_DOUBLE_EQ(Margin("txtBottomMargin").maximum(), 203.2);
    EXPECT_DOUBLE_EQ(Margin("txtBottomMargin").minimum(), 10.1);
    Type("txtLeftMargin", "500");
    EXPECT_LE(Margin("txtLeftMargin").value(), 107.9);
    Type("txtLeftMargin", "100");
    // 215.9 less 88.9 and 100: no more than 27 are left on the right.
    EXPECT_DOUBLE_EQ(Margin("txtRightMargin").maximum(), 27.0);
    Type("txtTopMargin", "0");
    EXPECT_EQ(FaultOf(m_dialog->Setup()), PrintFault::kNone);
}

TEST_F(PrintSetupDialog, GivesMarginsUpThatASmallerPaperHasNoRoomFor) {
    Show({.left = 4000, .right = 1000, .top = 900, .bottom = 800});
    Control<ChoiceBox>("cboPaper").SelectRow(5);
    EXPECT_EQ(m_dialog->Setup().left, 720);
    EXPECT_EQ(m_dialog->Setup().right, 720);
    EXPECT_EQ(m_dialog->Setup().top, 900) << "there is room for these";
    EXPECT_EQ(m_dialog->Setup().bottom, 800);
}

TEST_F(PrintSetupDialog, GoesBackToTheStandardPage) {
    Show(SomeSetup());
    Control<QPushButton>("cmdStandardPage").click();
    EXPECT_EQ(m_dialog->Setup(), PrintSetup{.printer = "Plotter"});
    EXPECT_EQ(Control<ChoiceBox>("cboPaper").currentIndex(), 0);
    EXPECT_TRUE(Control<QRadioButton>("optPortrait").isChecked());
}

TEST_F(PrintSetupDialog, NeverHasASetupThatNothingCanBePrintedWith) {
    EXPECT_TRUE(rc::check([this](const std::vector<std::pair<std::uint8_t, std::uint8_t>>& deeds) {
        Show();
        constexpr std::array kMargins{"txtLeftMargin", "txtRightMargin", "txtTopMargin", "txtBottomMargin"};
        for (const auto& [what, value] : deeds) {
            if (what % 3U == 0) {
                Control<ChoiceBox>("cboPaper").SelectRow(value % 8);
            } else if (what % 3U == 1) {
                Control<QRadioButton>(value % 2U == 0 ? "optPortrait" : "optLandscape").click();
            } else {
                Margin(kMargins.at(what % 4U)).setValue(value * 2.0);
            }
            RC_ASSERT(FaultOf(m_dialog->Setup()) == PrintFault::kNone);
        }
    }));
}

TEST_F(PrintSetupDialog, TheWheelChangesNothingWithoutTheFocus) {
    Show();
    QDoubleSpinBox& box = Margin("txtLeftMargin");
    const double before = box.value();
    QWheelEvent event(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &event);
    EXPECT_EQ(box.value(), before);
    box.setFocus();
    QApplication::sendEvent(&box, &event);
    EXPECT_GT(box.value(), before);
}

TEST_F(PrintSetupDialog, IsDrivenByKeys) {
    Show();
    std::set<QString> keys;
    const auto use = [&keys](const QString& caption) {
        const qsizetype mark = caption.indexOf('&');
        ASSERT_GE(mark, 0) << caption.toStdString();
        EXPECT_TRUE(keys.insert(caption.mid(mark + 1, 1).toUpper()).second) << caption.toStdString();
    };
    for (const auto* label : m_dialog->findChildren<QLabel*>()) {
        use(label->text());
    }
    for (const auto* button : m_dialog->findChildren<QRadioButton*>()) {
        use(button->text());
    }
    use(Control<QPushButton>("cmdStandardPage").text());
    for (QWidget* widget : m_dialog->findChildren<QWidget*>()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
                << widget->objectName().toStdString();
        }
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
    Show();
    QDoubleSpinBox& box = Margin("txtTopMargin");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, "20");
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(m_dialog->Setup().top, 1134) << "Enter takes over what was typed: 20 mm are 1133.9 twips";
}

TEST(PrinterLayout, IsThePaperAsPrintDialogsHaveIt) {
    const QPageLayout layout = PrinterLayout(SomeSetup());
    EXPECT_EQ(layout.pageSize().id(), QPageSize::A4);
    EXPECT_EQ(layout.orientation(), QPageLayout::Landscape);
    EXPECT_EQ(layout.margins(QPageLayout::Point), QMarginsF(45, 35, 40, 30));
    EXPECT_EQ(PrinterLayout({}).pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(PrinterLayout({}).orientation(), QPageLayout::Portrait);
}

TEST(PrinterLayout, GivesBackWhatWasChangedThere) {
    PrintSetup setup = SomeSetup();
    const QPageLayout before = PrinterLayout(setup);
    TakeLayout(setup, before, before);
    EXPECT_EQ(setup, SomeSetup());
    QPageLayout after = before;
    after.setOrientation(QPageLayout::Portrait);
    after.setMargins({45, 72, 40, 30});
    TakeLayout(setup, before, after);
    // A page of 595 by 842 points, of 20 twips each.
    EXPECT_EQ(setup, (PrintSetup{.printer = "Plotter",
                                 .width = 11900,
                                 .height = 16840,
                                 .left = 900,
                                 .right = 800,
                                 .top = 1440,
                                 .bottom = 600}));
}

TEST(PrinterLayout, LeavesASetupAloneWhereReportsWouldHaveNoRoom) {
    PrintSetup setup = SomeSetup();
    const QPageLayout before = PrinterLayout(setup);
    TakeLayout(setup, before, QPageLayout(QPageSize(QPageSize::A8), QPageLayout::Portrait, {30, 30, 30, 30}));
    EXPECT_EQ(setup, SomeSetup());
}

}  // namespace
}  // namespace genvara

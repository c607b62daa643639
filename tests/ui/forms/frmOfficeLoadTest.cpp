#include "frmOfficeLoad.h"

#include <gtest/gtest.h>

#include <QTest>

#include "FormsFixture.h"

namespace genvara {
namespace {

constexpr const char* kCounts[] = {"txtPC", "txtPrinters", "txtFaxes", "txtCopiers"};

class OfficeForm : public FormsTest {
  protected:
    static std::string Counted(const COfficeLoad& load) {
        std::string text;
        for (const std::int32_t count :
             {load.NumPCs(), load.NumPrinters(), load.NumFaxes(), load.NumCopiers()}) {
            text += std::to_string(count) + " ";
        }
        return text;
    }
};

TEST_F(OfficeForm, OpensBlankAndEvenlyDistributed) {
    const auto form = New<frmOfficeLoad>();
    EXPECT_EQ(form->windowTitle(), "Office Equipment");
    EXPECT_TRUE(IsOn(*form, "opt3Phase"));
    EXPECT_EQ(Find<QAbstractButton>(*form, "opt3Phase").text().remove('&'), "Evenly Distributed");
    for (const char* count : kCounts) {
        EXPECT_EQ(TextOf(*form, count), "");
    }
}

TEST_F(OfficeForm, StoresTheCounts) {
    const struct {
        const char* counts[4];
        const char* phases;
        const char* stored;
        double watts;     // 300, 600, 600 and 1200 a machine
        double phaseOne;  // W of rectifiers on phase A
    } rows[] = {
        // 3000 + 1200 + 600 + 1200, a third on each phase
        {{"10", "2", "1", "1"}, "opt3Phase", "10 2 1 1 ", 6000.0, 2000.0},
        {{"10", "2", "1", "1"}, "optPhaseA", "10 2 1 1 ", 6000.0, 6000.0},
        {{"10", "2", "1", "1"}, "optPhaseC", "10 2 1 1 ", 6000.0, 0.0},
        {{"", "", "007", ""}, "opt3Phase", "0 0 7 0 ", 4200.0, 1400.0},
        {{"0", "", "", ""}, "opt3Phase", "0 0 0 0 ", 0.0, 0.0},
        // 2147483647 x 300
        {{"2147483647", "", "", ""}, "optPhaseA", "2147483647 0 0 0 ", 644245094100.0, 644245094100.0}};
    for (const auto& row : rows) {
        const auto form = New<frmOfficeLoad>();
        for (std::size_t i = 0; i < 4; ++i) {
            Type(*form, kCounts[i], row.counts[i]);
        }
        Click(*form, row.phases);
        Click(*form, "cmdOK");
        EXPECT_FALSE(form->isVisible());
        ASSERT_GT(Step().NumLoads(), 0);
        const auto& load = dynamic_cast<const COfficeLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.name(), "<Office Equip.>");
        EXPECT_EQ(Counted(load), row.stored);
        EXPECT_EQ(load.RunningRealPower(), row.watts);
        EXPECT_EQ(load.SinglePhaseRectPower(1), row.phaseOne);
    }
}

TEST_F(OfficeForm, AsksForOneCountAtLeast) {
    for (const char* blank : {"", "  "}) {
        const auto form = New<frmOfficeLoad>();
        Type(*form, "txtFaxes", "99999999999");
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, "Error #6\r\nOverflow");
        EXPECT_TRUE(Field(*form, "txtFaxes").InError());
        for (const char* count : kCounts) {
            Field(*form, count).setText(blank);  // as pasted, past the key filter
            Field(*form, count).ShowError("wrong");
        }
        Click(*form, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, "At least one type of load must be specified.");
        EXPECT_EQ(message.title, "ERROR");
        EXPECT_EQ(message.icon, MessageIcon::Stop);
        EXPECT_TRUE(form->isVisible());
        EXPECT_TRUE(Field(*form, "txtPC").hasFocus());
        for (const char* count : kCounts) {
            EXPECT_FALSE(Field(*form, count).InError()) << count;
        }
        EXPECT_EQ(Step().NumLoads(), 0);
        EXPECT_FALSE(host.changed);
    }
}

TEST_F(OfficeForm, ABlankQuantityComesFirst) {
    const auto form = New<frmOfficeLoad>();
    Type(*form, "txtQty", "");
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Parameter must be numeric.");
    EXPECT_TRUE(Field(*form, "txtQty").InError());
    Type(*form, "txtQty", "0");
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #2\r\nLoad quantity out of range");
    Type(*form, "txtQty", "1");
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "At least one type of load must be specified.");
    EXPECT_FALSE(Field(*form, "txtQty").InError());
}

TEST_F(OfficeForm, ReportsACountThatCannotBeStored) {
    const struct {
        const char* text;
        const char* message;
    } rows[] = {{"many", "Parameter must be numeric."}, {"2147483648", "Error #6\r\nOverflow"}};
    const char* negatives[] = {
        "Error #28\r\nNegative number of PCs", "Error #28\r\nNegative number of printers",
        "Error #28\r\nNegative number of fax machines", "Error #28\r\nNegative number of copiers"};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto form = New<frmOfficeLoad>();
        const auto expect = [&](const char* text, const char* message) {
            Field(*form, kCounts[i]).setText(text);  // as pasted, past the key filter
            Click(*form, "cmdOK");
            EXPECT_EQ(platform.TakeMessage().text, message) << kCounts[i];
            EXPECT_TRUE(Field(*form, kCounts[i]).InError()) << kCounts[i];
            EXPECT_TRUE(Field(*form, kCounts[i]).hasFocus()) << kCounts[i];
        };
        for (const auto& row : rows) {
            expect(row.text, row.message);
        }
        expect("-1", negatives[i]);
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

void Fill(COfficeLoad& load, std::int32_t phases, std::int32_t seed) {
    load.name("Second floor");
    load.Quantity(2);
    load.Phases(phases);
    load.NumPCs(seed);
    load.NumPrinters(seed / 2);
    load.NumFaxes(seed / 3);
    load.NumCopiers(seed / 4);
}

TEST_F(OfficeForm, ABlankCountKeepsTheStoredOne) {
    COfficeLoad load;
    Fill(load, 0, 12);  // 12, 6, 4 and 3
    const auto form = Edit<frmOfficeLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtPC"), "12");
    EXPECT_EQ(TextOf(*form, "txtCopiers"), "3");
    Type(*form, "txtPC", "");
    Type(*form, "txtFaxes", "0");
    Field(*form, "txtCopiers").setText(" ");
    Click(*form, "cmdOK");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Counted(load), "12 6 0 3 ");
}

TEST_F(OfficeForm, AllBlankLeavesAnEditedLoadAlone) {
    COfficeLoad load;
    Fill(load, 0, 12);
    const std::string before = Members(load);
    const auto form = Edit<frmOfficeLoad>(load);
    Type(*form, "txtName", "Third floor");
    for (const char* count : kCounts) {
        Type(*form, count, "");
    }
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "At least one type of load must be specified.");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Members(load), before);
}

TEST_F(OfficeForm, OkAtOnceChangesNothing) {
    for (const std::int32_t system : {3, 1}) {
        host.phases = system;
        for (const std::int32_t phases : {0, 1, 2, 3}) {
            for (const std::int32_t seed : {0, 1, 77, std::numeric_limits<std::int32_t>::max()}) {
                COfficeLoad load;
                Fill(load, phases, seed);
                ExpectOkChangesNothing<frmOfficeLoad>(load);
            }
        }
    }
}

TEST_F(OfficeForm, TakesDigitsAlone) {
    const auto form = New<frmOfficeLoad>();
    for (const char* count : kCounts) {
        platform.beeps = 0;
        Type(*form, count, "-1.2x");
        EXPECT_EQ(TextOf(*form, count), "12");
        EXPECT_EQ(platform.beeps, 3);
    }
}

}  // namespace
}  // namespace genvara

// A search for a load that its form takes and a run cannot work with: legal and odd entries of all nine
// forms, each followed by View Gensets in the real window.

#include <QCheckBox>
#include <QClipboard>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>
#include <array>
#include <random>

#include "CMiscLoad.h"
#include "ChoiceBox.h"
#include "EntryField.h"
#include "Load.h"
#include "LoadTrial.h"
#include "MakeLoadForm.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

constexpr int kRounds = 150;      // of each kind
constexpr unsigned kModest = 20;  // entries at the beginning of the table that many fields take

/// What people enter, and what they do not mean to.
constexpr std::array kEntries{
    "0",     "1",       "2",     "3.5",   "7",   "10",     "0.6",    "0.85",       "0.9",
    "1.0",   "1.00",    "1.2",   "12.5",  "25",  "50",     "70",     "90",         "99",
    "100",   "100.5",   "125",   "150",   "250", "256",    "257",    "300",        "480",
    "500",   "600",     "750",   "798",   "880", "1000",   "1000.1", "2000",       "2500",
    "5000",  "6250000", "25000", "99999", "1e3", "",       " ",      ".",          "-5",
    "1,000", "15\r\n",  "abc",   "00",    "007", "0.0001", "1e300",  "2147483647", "99999999999"};

class FormsSearch : public WindowTest, public testing::WithParamInterface<std::int32_t> {
  protected:
    void SetUp() override {
        platform.Take();
        AddStepWithLoad();
        Bar(2);
    }
    unsigned Throw(unsigned sides) { return std::uniform_int_distribution<unsigned>(0, sides - 1)(m_dice); }

    void Enter(EntryField& field) {
        const char* entry =
            kEntries.at(Throw(Throw(2) == 0 ? kModest : static_cast<unsigned>(kEntries.size())));
        field.setFocus();
        field.selectAll();
        if (Throw(3) == 0) {
            QApplication::clipboard()->setText(QString::fromUtf8(entry));
            QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
        } else {
            QTest::keyClicks(&field, QString(entry).trimmed());  // no key types a line end
        }
    }
    /// Fills a form as a user might, who goes from field to field.
    void Fill(QWidget& form) {
        for (auto* button : form.findChildren<QRadioButton*>()) {
            if (button->isEnabled() && Throw(4) == 0) {
                button->click();
            }
        }
        for (auto* list : form.findChildren<ChoiceBox*>()) {
            if (list->isEnabled() && Throw(2) == 0) {
                list->setFocus();
                for (unsigned i = Throw(6); i > 0; --i) {
                    QTest::keyClick(list, Qt::Key_Down);
                }
            }
        }
        for (auto* box : form.findChildren<QCheckBox*>()) {
            if (box->isEnabled() && Throw(2) == 0) {
                box->click();
            }
        }
        for (auto* field : form.findChildren<EntryField*>()) {
            const bool count = field->objectName() == "txtStepNum" || field->objectName() == "txtQty";
            if (field->isEnabled() && field->isVisible() && Throw(count ? 8 : 3) != 0 &&
                !(count && Throw(2))) {
                Enter(*field);
            }
        }
        if (auto* loaded = form.findChild<QRadioButton*>(Throw(2) == 0 ? "optLoaded" : "optUnloaded")) {
            loaded->click();
        }
    }
    void ViewGensets() {
        Bar(3);
        platform.Take();
        Bar(2);
        platform.Take();
    }
    /// What the load under test is, for whoever has to mend it.
    static std::string Describe(const Load& load) {
        std::string text;
        for (const std::string& row : load.GetProps()) {
            text += row + "; ";
        }
        return text;
    }

    std::mt19937 m_dice{20261121U + static_cast<unsigned>(GetParam())};
};

TEST_P(FormsSearch, FindsNoLoadThatEndsARun) {
    int stored = 0;
    int refused = 0;
    CLoadStep& step = App().LoadProfile().LoadStep(1);
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        // Beside another load, and as good as alone.
        dynamic_cast<CMiscLoad&>(*step.begin()).RunningRealPower(round % 2 == 0 ? 50000.0 : 0.0);
        const auto form = MakeLoadForm(GetParam(), {.owner = &Window(),
                                                    .platform = platform,
                                                    .host = Window(),
                                                    .project = {.profile = App().LoadProfile(),
                                                                .site = App().PowerSystem(),
                                                                .catalogue = App().Catalogue()}});
        form->show();
        QApplication::setActiveWindow(form.get());
        Fill(*form);
        Click(*form, "cmdOK");
        platform.Take();
        if (form->isVisible()) {
            ++refused;
            const auto fields = form->findChildren<EntryField*>();
            const bool shown =
                std::ranges::any_of(fields, [](const auto* field) { return field->InError(); }) ||
                std::ranges::any_of(form->findChildren<ChoiceBox*>(),
                                    [](const auto* list) { return list->InError(); });
            const bool nothingCounted = GetParam() == load_type::kOffice;
            EXPECT_TRUE(shown || nothingCounted) << "a refusal without a red field";
            Click(*form, "cmdCancel");
            continue;
        }
        ++stored;
        ASSERT_EQ(step.NumLoads(), 2);
        const Load& load = *std::prev(step.end());
        EXPECT_FALSE(TryFigures(load)) << Describe(load);
        ViewGensets();
        ASSERT_TRUE(platform.ends.empty()) << platform.ends.front().Source() << ": "
                                           << platform.ends.front().Description() << " by " << Describe(load);
        auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
        QTreeWidgetItem* node = tree.topLevelItem(0);
        tree.setCurrentItem(node->child(node->childCount() - 1));
        Click(Window(), "cmdDeleteLoad");
        ASSERT_EQ(step.NumLoads(), 1);
    }
    EXPECT_GT(stored, 3) << "the dice never filled a form";
    EXPECT_GT(refused, 3) << "the dice were never refused";
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, FormsSearch,
                         testing::Range(load_type::kAirConditioning, load_type::kVFD + 1));

}  // namespace
}  // namespace genvara

#pragma once

#include <QPushButton>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CMiscLoad.h"
#include "Globals.h"
#include "ProfileTree.h"
#include "WindowFixture.h"
#include "panLoadProfile.h"

namespace genvara {

/// The load profile panel of a main window, shown and empty, at a site that allows a dip of 20 %.
class ProfileTest : public WindowTest {
  protected:
    static constexpr std::int32_t kSiteDip = 20;  // percent

    void SetUp() override {
        Bar(2);
        App().PowerSystem().MaxVoltageDip(kSiteDip);
        platform.Take();
    }

    [[nodiscard]] panLoadProfile& Panel() { return Find<panLoadProfile>(Window(), "panLoadProfile"); }
    [[nodiscard]] ProfileTree& Tree() { return Control<ProfileTree>("panLoadProfile", "tlsProfileDisplay"); }
    [[nodiscard]] QTreeWidget& Properties() {
        return Control<QTreeWidget>("panLoadProfile", "tlsPropertyDisplay");
    }
    [[nodiscard]] QPushButton& Button(const char* name) {
        return Control<QPushButton>("panLoadProfile", name);
    }
    [[nodiscard]] CLoadProfile& Profile() { return App().LoadProfile(); }

    /// A step at the end, in the model and on the panel.
    std::int32_t AddStep(const std::string& description) {
        const std::int32_t id = Profile().AddLoadStep(description, kSiteDip, 0);
        Panel().DisplayNewStep(Profile().NumLoadSteps(), id);
        return id;
    }
    /// A load at unity power factor on a step by its position, in the model and on the panel.
    std::int32_t AddLoad(std::int32_t step, const std::string& name, double watts = 1000.0) {
        auto load = std::make_unique<CMiscLoad>();
        load->name(name);
        load->RunningRealPower(watts);
        const std::int32_t id = Profile().LoadStep(step).AddLoad(std::move(load));
        Panel().DisplayNewLoad(step, id);
        return id;
    }
    /// The node of a step, or of a load by its place on the step, both from 1.
    [[nodiscard]] QTreeWidgetItem& Node(int step, int load = 0) {
        QTreeWidgetItem* node = Tree().topLevelItem(step - 1);
        node = load == 0 || node == nullptr ? node : node->child(load - 1);
        if (node == nullptr) {
            throw std::runtime_error("no such node");
        }
        return *node;
    }
    void Select(int step, int load = 0) { Tree().setCurrentItem(&Node(step, load)); }

    /// Each step of the tree as "text: load, load".
    [[nodiscard]] std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        for (int step = 0; step < Tree().topLevelItemCount(); ++step) {
            const QTreeWidgetItem* node = Tree().topLevelItem(step);
            std::string line = node->text(0).toStdString() + ":";
            for (int load = 0; load < node->childCount(); ++load) {
                line += " " + node->child(load)->text(0).toStdString();
            }
            lines.push_back(line);
        }
        return lines;
    }
    /// The same of the model.
    [[nodiscard]] std::vector<std::string> Stored() {
        std::vector<std::string> lines;
        for (const CLoadStep& step : Profile()) {
            std::string line = step.Description() + ":";
            for (const Load& load : step) {
                line += " " + load.name();
            }
            lines.push_back(line);
        }
        return lines;
    }
    /// What the property list shows, as "label=value".
    [[nodiscard]] std::vector<std::string> Rows() {
        std::vector<std::string> rows;
        for (int row = 0; row < Properties().topLevelItemCount(); ++row) {
            const QTreeWidgetItem* item = Properties().topLevelItem(row);
            rows.push_back((item->text(0) + "=" + item->text(1)).toStdString());
        }
        return rows;
    }
    /// Names of the buttons that are on, without "cmd".
    [[nodiscard]] std::vector<std::string> On() {
        std::vector<std::string> names;
        for (const char* name : {"cmdAddStep", "cmdDeleteStep", "cmdAddLoad", "cmdDeleteLoad", "cmdEdit",
                                 "cmdMoveUp", "cmdMoveDown"}) {
            if (Button(name).isEnabled()) {
                names.emplace_back(name + 3);
            }
        }
        return names;
    }
};

}  // namespace genvara

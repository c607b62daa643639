#include "ProfileFollower.h"

#include "Texts.h"

namespace genvara {
namespace {

void ShowText(QTreeWidgetItem& node, const std::string& text) {
    if (const QString shown = ToQt(text); node.text(profile_column::kText) != shown) {
        node.setText(profile_column::kText, shown);
    }
}

/// The place, from a first one on, of the child that answers to an ID; the number of children if none does.
template <typename Child, typename IdOf>
int Seek(int first, int count, std::int32_t id, Child child, IdOf idOf) {
    int place = first;
    while (place < count && idOf(*child(place)) != id) {
        ++place;
    }
    return place;
}

void RemoveGoneLoads(QTreeWidgetItem& node, const CLoadStep& step) {
    for (int place = node.childCount() - 1; place >= 0; --place) {
        if (step.LoadItem(ProfileTree::LoadID(*node.child(place))) == nullptr) {
            delete node.child(place);  // NOLINT(cppcoreguidelines-owning-memory): this removes it
        }
    }
}

void RemoveGone(ProfileTree& tree, const CLoadProfile& profile) {
    for (int place = tree.topLevelItemCount() - 1; place >= 0; --place) {
        QTreeWidgetItem* node = tree.topLevelItem(place);
        if (const CLoadStep* step = profile.LoadStepByID(ProfileTree::StepID(*node))) {
            RemoveGoneLoads(*node, *step);
        } else {
            delete node;  // NOLINT(cppcoreguidelines-owning-memory): this removes it
        }
    }
}

void FollowLoads(QTreeWidgetItem& node, const CLoadStep& step) {
    int place = 0;
    for (const Load& load : step) {
        const int found = Seek(
            place, node.childCount(), load.ID(), [&](int at) { return node.child(at); },
            [](const QTreeWidgetItem& child) { return ProfileTree::LoadID(child); });
        if (found == node.childCount()) {
            ProfileTree::AddLoad(node, ToQt(load.name()), load.ID(), load.LoadType());
        }
        if (found != place) {
            node.insertChild(place, node.takeChild(found));
        }
        ShowText(*node.child(place), load.name());
        ++place;
    }
}

/// Puts a step's node in its place.
QTreeWidgetItem& StepAt(ProfileTree& tree, int place, const CLoadStep& step) {
    const int found = Seek(
        place, tree.topLevelItemCount(), step.StepID(), [&](int at) { return tree.topLevelItem(at); },
        [](const QTreeWidgetItem& node) { return ProfileTree::StepID(node); });
    if (found == tree.topLevelItemCount()) {
        return *tree.InsertStep(place + 1, ToQt(step.Description()), step.StepID());
    }
    QTreeWidgetItem* node = tree.topLevelItem(found);
    if (found != place) {
        const bool expanded = node->isExpanded();
        tree.insertTopLevelItem(place, tree.takeTopLevelItem(found));
        node->setExpanded(expanded);
    }
    return *node;
}

}  // namespace

void FollowProfile(ProfileTree& tree, const CLoadProfile& profile) {
    tree.setUpdatesEnabled(false);
    RemoveGone(tree, profile);
    int place = 0;
    for (const CLoadStep& step : profile) {
        QTreeWidgetItem& node = StepAt(tree, place, step);
        ShowText(node, step.Description());
        FollowLoads(node, step);
        ++place;
    }
    tree.setUpdatesEnabled(true);
}

QTreeWidgetItem* FindPlace(const ProfileTree& tree, ProfilePlace place) {
    for (int at = 0; place && at < tree.topLevelItemCount(); ++at) {
        QTreeWidgetItem* step = tree.topLevelItem(at);
        if (ProfileTree::StepID(*step) == place.stepId) {
            QTreeWidgetItem* load = place.loadId < 0 ? nullptr : tree.FindLoad(at + 1, place.loadId);
            return load == nullptr ? step : load;
        }
    }
    return nullptr;
}

}  // namespace genvara

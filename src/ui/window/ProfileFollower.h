#pragma once

#include "CLoadProfile.h"
#include "ProfileTree.h"
#include "ProjectMoment.h"

namespace genvara {

/// Brings a tree to what a profile has become: nodes that stay keep their place on screen and what is open of
/// them, those that moved are moved, and only new ones are made.
void FollowProfile(ProfileTree& tree, const CLoadProfile& profile);

/// The node of a step or a load; of its step where the load is gone; null where that is gone, too.
[[nodiscard]] QTreeWidgetItem* FindPlace(const ProfileTree& tree, ProfilePlace place);

}  // namespace genvara

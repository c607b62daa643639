#pragma once

namespace genvara {

class ctlSideBar;

/// Lets screen readers see the items of side bars as buttons with name, state and key. Does nothing when
/// called again.
void InstallSideBarAccessibility();
/// Tells screen readers that another item is that of the panel shown.
void AnnounceCurrent(ctlSideBar& bar);
/// Tells screen readers that the keyboard stands on another item.
void AnnounceStanding(ctlSideBar& bar);

}  // namespace genvara

#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace genvara {

/// A dialog, by its object name, and the place of the manual that is about it.
struct HelpPage {
    std::string_view dialog;
    std::string_view place;  ///< page, and where on it
};

inline constexpr std::array<HelpPage, 19> kHelpPages{{{"frmAbout", "index.html"},
                                                      {"frmAddLoad", "loads.html#common"},
                                                      {"frmAddStep", "loads.html#common"},
                                                      {"frmAirCondLoad", "loads.html#air"},
                                                      {"frmChargerLoad", "loads.html#charger"},
                                                      {"frmDefaults", "site.html#defaults"},
                                                      {"frmEditStep", "loads.html#common"},
                                                      {"frmErrLog", "files.html#rescued"},
                                                      {"frmImport", "import.html"},
                                                      {"frmLightLoad", "loads.html#lighting"},
                                                      {"frmMedLoad", "loads.html#medical"},
                                                      {"frmMiscLoad", "loads.html#misc"},
                                                      {"frmMtrLoad", "loads.html#motor"},
                                                      {"frmOfficeLoad", "loads.html#office"},
                                                      {"frmOptions", "site.html#defaults"},
                                                      {"frmRecover", "files.html#rescued"},
                                                      {"frmSSCurrentLimit", "loads.html#motor"},
                                                      {"frmUPSLoad", "loads.html#ups"},
                                                      {"frmVFDLoad", "loads.html#vfd"}}};

/// The place for a dialog; empty, which is the contents, for those of the desktop.
[[nodiscard]] constexpr std::string_view HelpPlaceOf(std::string_view dialog) noexcept {
    const auto* const found = std::ranges::find(kHelpPages, dialog, &HelpPage::dialog);
    return found == kHelpPages.end() ? std::string_view() : found->place;
}

}  // namespace genvara

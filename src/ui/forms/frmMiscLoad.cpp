#include "frmMiscLoad.h"

#include "EntryText.h"
#include "LinearPower.h"
#include "Texts.h"

namespace genvara {

frmMiscLoad::frmMiscLoad(const LoadFormServices& services) : LoadFormOf(load_type::kMiscellaneous, services) {
    m_kW =
        AddField({.labelName = "lblkW",
                  .name = "txtkW",
                  .caption = "kW",
                  .digits = 10,
                  .note = ToQt(BoundsNote("0", Plain(linear_limits::kRealPower.greatest / kPerKilo), " kW"))},
                 key_filters::Numeric(), true);
    m_pF = AddField({.labelName = "lblPF",
                     .name = "txtPF",
                     .caption = "pF",
                     .digits = 10,
                     .note = ToQt(BoundsNote(Fixed(linear_limits::kPowerFactor.least, 2),
                                             Fixed(linear_limits::kPowerFactor.greatest, 2)))},
                    key_filters::Numeric(), true);
    OpenForNewLoad();
}

void frmMiscLoad::SetDefaults() {
    m_pF->Content(Fixed(linear_limits::kPowerFactor.greatest, 2));
}

void frmMiscLoad::ShowKind(const CMiscLoad& load) {
    m_kW->Content(Plain(load.RunningRealPower() / kPerKilo));
    m_pF->Content(Fixed(load.RunningPowerFactor(), 2));
}

bool frmMiscLoad::StoreKind(CMiscLoad& load) {
    StoreQuantity(load);
    load.RunningRealPower(Kilo(*m_kW));
    load.RunningPowerFactor(Number(*m_pF));
    return true;
}

}  // namespace genvara

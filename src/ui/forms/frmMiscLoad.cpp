#include "frmMiscLoad.h"

#include "LinearPower.h"
#include "MemberBounds.h"
#include "Texts.h"

namespace genvara {

frmMiscLoad::frmMiscLoad(const LoadFormServices& services) : LoadFormOf(load_type::kMiscellaneous, services) {
    m_kW = AddField({.labelName = "lblkW",
                     .name = "txtkW",
                     .caption = "kW",
                     .digits = 10,
                     .bounds = LoadBounds(load_type::kMiscellaneous, "RunningRealPower")},
                    key_filters::Numeric(), true);
    m_pF = AddField({.labelName = "lblPF",
                     .name = "txtPF",
                     .caption = "pF",
                     .digits = 10,
                     .bounds = LoadBounds(load_type::kMiscellaneous, "RunningPowerFactor")},
                    key_filters::Numeric(), true);
    OpenForNewLoad();
}

void frmMiscLoad::SetDefaults() {
    m_pF->Content(Numbers().Fixed(linear_limits::kPowerFactor.greatest, 2));
}

void frmMiscLoad::ShowKind(const CMiscLoad& load) {
    m_kW->Content(Numbers().Kilo(load.RunningRealPower()));
    m_pF->Content(Numbers().Fixed(load.RunningPowerFactor(), 2));
}

bool frmMiscLoad::StoreKind(CMiscLoad& load) {
    StoreQuantity(load);
    load.RunningRealPower(FromKilo(*m_kW));
    load.RunningPowerFactor(Number(*m_pF));
    return true;
}

EntryField* frmMiscLoad::FieldOf(LoadFigure /*figure*/) {
    return m_kW;
}

}  // namespace genvara

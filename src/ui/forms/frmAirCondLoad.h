#pragma once

#include "AirCondEntry.h"
#include "CAirCondLoad.h"
#include "LoadForm.h"

class QLabel;

namespace genvara {

/// Entry form of an air conditioner: its size, by cooling or by its compressor.
class frmAirCondLoad final : public LoadFormOf<CAirCondLoad> {
    Q_OBJECT

  public:
    explicit frmAirCondLoad(const LoadFormServices& services);

  private:
    void AddMethods();
    void MethodClicked(std::int32_t code);
    void ShowKind(const CAirCondLoad& load) override;
    bool StoreKind(CAirCondLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;
    [[nodiscard]] std::string FailureText(const RaisedError& failure) const override;

    OptionFrame* m_method = nullptr;
    EntryField* m_power;
    QLabel* m_powerTitle;
    QLabel* m_powerUnits;
};

}  // namespace genvara

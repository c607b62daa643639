#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// Office equipment, counted; each kind with a fixed allowance and all of it on single-phase rectifiers.
/// Phases code 0 means evenly distributed over the three phases.
class COfficeLoad final : public Load {
  public:
    // The range error of the quantity names the motor, as it always did.
    COfficeLoad() : Load({"CMtrLoad::Quantity", "COfficeLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<COfficeLoad>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kOffice; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Desktop computers; 0 or more, default 0.
    /// @throws RaisedError 28 "Negative number of PCs" from "COfficeLoad::NumPCs".
    void NumPCs(std::int32_t count);
    [[nodiscard]] std::int32_t NumPCs() const noexcept { return m_numPCs; }

    /// Printers; 0 or more, default 0.
    /// @throws RaisedError 28 "Negative number of printers" from "COfficeLoad::NumPrinters".
    void NumPrinters(std::int32_t count);
    [[nodiscard]] std::int32_t NumPrinters() const noexcept { return m_numPrinters; }

    /// Fax machines; 0 or more, default 0.
    /// @throws RaisedError 28 "Negative number of fax machines" from "COfficeLoad::NumFaxes".
    void NumFaxes(std::int32_t count);
    [[nodiscard]] std::int32_t NumFaxes() const noexcept { return m_numFaxes; }

    /// Copiers; 0 or more, default 0.
    /// @throws RaisedError 28 "Negative number of copiers" from "COfficeLoad::NumCopiers".
    void NumCopiers(std::int32_t count);
    [[nodiscard]] std::int32_t NumCopiers() const noexcept { return m_numCopiers; }

    [[nodiscard]] double RunningRealPower() const override;
    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingRealPower() const override { return RunningRealPower(); }
    [[nodiscard]] double StartingAppPower() const override { return RunningAppPower(); }
    [[nodiscard]] double StartingImgPower() const override { return RunningImgPower(); }

    [[nodiscard]] double SinglePhaseRectPower(std::int32_t phase) const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_numPCs, m_numPrinters, m_numFaxes, m_numCopiers);
    }

    std::int32_t m_numPCs = 0;
    std::int32_t m_numPrinters = 0;
    std::int32_t m_numFaxes = 0;
    std::int32_t m_numCopiers = 0;
};

}  // namespace genvara

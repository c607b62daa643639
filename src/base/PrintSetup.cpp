#include "PrintSetup.h"

#include <algorithm>
#include <array>
#include <variant>

#include "FailureRegion.h"

namespace genvara {
namespace {

constexpr const char* kPrinterValue = "Printer";

struct LengthValue {
    const char* name;
    std::int32_t PrintSetup::*length;
};
constexpr std::array<LengthValue, 6> kLengthValues{{{"Paper Width", &PrintSetup::width},
                                                    {"Paper Height", &PrintSetup::height},
                                                    {"Left Margin", &PrintSetup::left},
                                                    {"Right Margin", &PrintSetup::right},
                                                    {"Top Margin", &PrintSetup::top},
                                                    {"Bottom Margin", &PrintSetup::bottom}}};

}  // namespace

PrintFault FaultOf(const PrintSetup& setup) noexcept {
    using namespace paper_limits;
    const auto isSide = [](std::int32_t side) { return side > 0 && side <= kLongestSide; };
    if (!isSide(setup.width) || !isSide(setup.height)) {
        return PrintFault::kPaper;
    }
    const auto isMargin = [](std::int32_t margin, std::int32_t least) {
        return margin >= least && margin <= kLongestSide;
    };
    if (!isMargin(setup.left, kLeastMargin) || !isMargin(setup.right, kLeastMargin) ||
        !isMargin(setup.top, kLeastMargin) || !isMargin(setup.bottom, kLeastBottom)) {
        return PrintFault::kMargins;
    }
    if (setup.width - setup.left - setup.right < kLeastTextWidth) {
        return PrintFault::kTextWidth;
    }
    return setup.height - setup.top - setup.bottom < kLeastTextHeight ? PrintFault::kTextHeight
                                                                      : PrintFault::kNone;
}

PrintSettings::PrintSettings(clsTRX_Registry& registry, const std::string& baseSubkey)
    : m_registry(&registry), m_subkey(baseSubkey + "Print Setup") {}

void PrintSettings::Open(bool create) const {
    m_registry->RootKey(HKEY_LOCAL_MACHINE);
    m_registry->SubKey(m_subkey);
    m_registry->AutoCreate(create);
    m_registry->OpenKey();
}

PrintSetup PrintSettings::Read() const {
    PrintSetup setup;
    FailureRegion region;
    const bool isRead = region.Run([&] {
        Open(false);
        for (const LengthValue& value : kLengthValues) {
            setup.*value.length =
                std::get<std::int32_t>(m_registry->Value(value.name, registry_type::REG_DWORD));
        }
    });
    region.Run([&] {
        setup.printer = std::get<std::string>(m_registry->Value(kPrinterValue, registry_type::REG_SZ));
    });
    m_registry->CloseKey();
    return isRead && FaultOf(setup) == PrintFault::kNone ? setup : PrintSetup{};
}

void PrintSettings::Write(const PrintSetup& setup) const {
    Open(true);
    for (const LengthValue& value : kLengthValues) {
        m_registry->Value(value.name, registry_type::REG_DWORD, setup.*value.length);
    }
    m_registry->Value(kPrinterValue, registry_type::REG_SZ, setup.printer);
    m_registry->CloseKey();
}

}  // namespace genvara

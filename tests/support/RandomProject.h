#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "CodePage.h"
#include "LoadFactory.h"
#include "MotorPower.h"
#include "ProjectModel.h"
#include "Properties.h"
#include "RaisedError.h"

namespace genvara {

/// Motors of 1 to 1000 hp on a bent line, so that no two columns are in proportion.
inline const MotorConversions kRandomMotors{.MotorHP = {1, 10, 1000},
                                            .MotorRunningKW = {0.9, 8.5, 790},
                                            .MotorRunningKVA = {1.3, 10.4, 880},
                                            .MotorStartPF = {0.7, 0.5, 0.2}};

/// Which letters random texts have.
enum class Letters { OfTheCodePage, Any };

/// Makes projects of every kind of record, whose members hold anything that their setters take: edges, broken
/// numbers, codes without a name, texts with line breaks.
class RandomProject {
  public:
    RandomProject(std::uint32_t seed, Letters letters) : m_dice(seed), m_letters(letters) {}

    void Fill(const ProjectModel& model) {
        SetAll(ProjectProperties(), model.project);
        SetAll(PowerSystemProperties(), model.powerSystem);
        model.loadProfile.DeleteAllLoadSteps();
        const int steps = Below(5);
        for (int number = 1; number <= steps; ++number) {
            model.loadProfile.AddLoadStep(Text(), 5 + Below(31), 0);
            CLoadStep& step = model.loadProfile.LoadStep(number);
            for (int loads = Below(8); loads > 0; --loads) {
                step.AddLoad(MakeOne(Below(9), model.powerSystem.Voltage(), model.motors));
            }
        }
    }

    /// A load of a kind whose powers can be worked out.
    std::unique_ptr<Load> MakeOne(std::int32_t loadType, double volts, const MotorConversions& motors) {
        for (;;) {
            std::unique_ptr<Load> load = MakeLoad(loadType, motors);
            SetAll(LoadProperties(loadType), *load);
            try {
                RebuildPowers(*load, volts, motors);
                return load;
            } catch (const RaisedError&) {
                // Such a size has no power; the next one may.
            }
        }
    }

    std::string Text() {
        constexpr std::array<std::string_view, 8> kTexts{
            "", "Pumps", "Chiller, roof", " blanks ", "two\r\nlines", "a\nb\rc", "#TRUE#", "12"};
        if (Below(2) == 0) {
            return std::string(kTexts.at(static_cast<std::size_t>(Below(8))));
        }
        std::string text;
        for (int length = Below(40); length > 0; --length) {
            text += m_letters == Letters::OfTheCodePage ? DecodeText(std::string(1, Byte())) : AnyLetter();
        }
        return text;
    }

  private:
    int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_dice); }

    /// Any byte but the double quote, which ends a text in a `.prj`.
    char Byte() {
        const int byte = Below(255);
        return static_cast<char>(byte < '"' ? byte : byte + 1);
    }

    std::string AnyLetter() {
        constexpr std::array<char32_t, 8> kOdd{U'"',      U'\\',     U'/',          U'\0',
                                               U'\u2028', U'\u65E5', U'\U0001F50C', U'\uFFFD'};
        std::string text;
        AppendUtf8(text, Below(2) == 0 ? kOdd.at(static_cast<std::size_t>(Below(8)))
                                       : static_cast<char32_t>(Below(0x500)));
        return text;
    }

    double Real(const Bounds& bounds) {
        if (bounds.HoldAnything()) {
            constexpr std::array<double, 8> kOdd{
                0.0, -0.0, 1.0 / 3.0, -273.15, 1e-300, 12345678.9012345678, 5e-324, 0.1 + 0.2};
            return Below(3) == 0 ? kOdd.at(static_cast<std::size_t>(Below(8)))
                                 : std::uniform_real_distribution<double>(0.0, 500.0)(m_dice);
        }
        const double least = bounds.least.value_or(-1e6);
        const double greatest = bounds.greatest.value_or(1e6);
        switch (Below(4)) {
            case 0:
                return greatest;
            case 1:
                return bounds.aboveLeast ? std::nextafter(least, greatest) : least;
            case 2:
                return std::floor(least + (greatest - least) / 3.0) + 1.0;
            default:
                return std::uniform_real_distribution<double>(std::nextafter(least, greatest),
                                                              greatest)(m_dice);
        }
    }

    std::int32_t Whole(const Bounds& bounds) {
        using Limits = std::numeric_limits<std::int32_t>;
        const auto least = static_cast<std::int32_t>(bounds.least.value_or(Limits::min()));
        const auto greatest = static_cast<std::int32_t>(bounds.greatest.value_or(Limits::max()));
        switch (Below(3)) {
            case 0:
                return least;
            case 1:
                return greatest;
            default:
                return std::uniform_int_distribution<std::int32_t>(least, greatest)(m_dice);
        }
    }

    std::int32_t Code(const PropertyFacts& facts) {
        // An entry method that is none cannot be worked out; other codes may be odd.
        if (facts.name != kEntryMethodName && Below(6) == 0) {
            return Whole(facts.range);
        }
        return facts.codes[static_cast<std::size_t>(Below(static_cast<int>(facts.codes.size())))].Code();
    }

    DateTime Moment() {
        const bool midnight = Below(4) == 0;
        return {1899 + Below(200),        1 + Below(12),           1 + Below(28), midnight ? 0 : Below(24),
                midnight ? 0 : Below(60), midnight ? 0 : Below(60)};
    }

    PropertyValue Value(const PropertyFacts& facts) {
        switch (facts.type) {
            case PropertyType::Real:
                return Real(facts.range);
            case PropertyType::Whole:
                return facts.only.empty()
                           ? Whole(facts.range)
                           : facts.only[static_cast<std::size_t>(Below(static_cast<int>(facts.only.size())))];
            case PropertyType::Truth:
                return Below(2) == 0;
            case PropertyType::Text:
                return facts.oneCharacter ? std::string(1, static_cast<char>('A' + Below(26))) : Text();
            case PropertyType::Code:
                return Code(facts);
            case PropertyType::Moment:
                break;
        }
        return Moment();
    }

    template <typename Record>
    void SetAll(std::span<const Property<Record>> table, Record& record) {
        for (const Property<Record>& row : table) {
            if constexpr (std::is_same_v<Record, Load>) {
                if (!Exists(row, record)) {
                    continue;
                }
            }
            row.set(record, Value(row.facts));
        }
    }

    std::mt19937 m_dice;
    Letters m_letters;
};

}  // namespace genvara

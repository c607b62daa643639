#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "FailureRegion.h"
#include "JsonProject.h"
#include "LoadFactory.h"
#include "MotorPower.h"
#include "NearestNames.h"
#include "ProjectDraft.h"
#include "Properties.h"
#include "PropertyText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kLoadTypeName = "LoadType";
constexpr std::string_view kNothing = "nothing";

/// A number as a whole one; broken numbers and those beyond 32 bits are none.
std::optional<std::int32_t> WholeOf(double number) {
    const bool whole = number == std::floor(number) && number >= std::numeric_limits<std::int32_t>::min() &&
                       number <= std::numeric_limits<std::int32_t>::max();
    return whole ? std::optional(static_cast<std::int32_t>(number)) : std::nullopt;
}

/// A draft's value as one of a member; nothing if it is of another type.
std::optional<PropertyValue> ConvertedTo(const PropertyFacts& facts, const DraftValue& value) {
    const auto of = [](auto converted) -> std::optional<PropertyValue> {
        return converted ? std::optional(PropertyValue(std::move(*converted))) : std::nullopt;
    };
    const auto* number = std::get_if<double>(&value.Value());
    const auto* text = std::get_if<std::string>(&value.Value());
    switch (facts.type) {
        case PropertyType::Real:
            return number != nullptr ? std::optional(PropertyValue(*number)) : std::nullopt;
        case PropertyType::Whole:
            return number != nullptr ? of(WholeOf(*number)) : std::nullopt;
        case PropertyType::Code:
            if (text != nullptr) {
                return of(CodeOfName(facts, *text));
            }
            return number != nullptr ? of(WholeOf(*number)) : std::nullopt;
        case PropertyType::Truth: {
            const auto* truth = std::get_if<bool>(&value.Value());
            return truth != nullptr ? std::optional(PropertyValue(*truth)) : std::nullopt;
        }
        case PropertyType::Text:
            return text != nullptr ? std::optional(PropertyValue(*text)) : std::nullopt;
        case PropertyType::Moment:
            break;
    }
    return text != nullptr ? of(ParseIso(*text)) : std::nullopt;
}

template <typename Record>
std::vector<std::string_view> NamesOf(std::span<const Property<Record>> table) {
    std::vector<std::string_view> names;
    for (const Property<Record>& row : table) {
        names.push_back(row.facts.name);
    }
    return names;
}

/// The records of a project in the making: new ones, with the defaults of those that they will replace.
struct NewRecords {
    explicit NewRecords(const ProjectModel& model) : project(model.project), powerSystem(model.powerSystem) {
        project.ResetDefaults();
        project.Created({});
        project.LastModified({});
        powerSystem.ResetDefaults();
    }

    CProject project;
    CPwrSys powerSystem;
    CLoadProfile loadProfile;
};

/// Makes records of a draft and collects what is wrong with it.
class DraftReader {
  public:
    DraftReader(const ProjectDraft& draft, const MotorConversions& motors, NewRecords& records,
                ProjectFaults& faults, ProjectFaults& gaps)
        : m_draft(&draft), m_motors(&motors), m_records(&records), m_faults(&faults), m_gaps(&gaps) {}

    void Read() {
        if (!IsOurs()) {
            return;  // nobody knows what members of another format mean
        }
        SetMembers(m_draft->project, ProjectProperties(), m_records->project);
        SetMembers(m_draft->powerSystem, PowerSystemProperties(), m_records->powerSystem);
        for (const DraftStep& step : m_draft->steps) {
            ReadStep(step);
        }
    }

  private:
    void Tell(std::int64_t line, std::string place, std::string expected, std::string found) {
        m_faults->Tell({.line = line,
                        .record = std::move(place),
                        .expected = std::move(expected),
                        .found = std::move(found)});
    }
    void TellMissing(const DraftRecord& record, std::string_view member, std::string expected) {
        if (!m_draft->brokenOff) {
            Tell(record.line, PointerTo(record.pointer, member), std::move(expected), std::string(kNothing));
        }
    }
    void Tell(const DraftRecord& record, const DraftMember& member, std::string expected) {
        Tell(member.line, PointerTo(record.pointer, member.name), std::move(expected), member.value.Shown());
    }

    [[nodiscard]] bool IsOurs() {
        const DraftRecord& head = m_draft->head;
        bool ours = RequireHead("Format", fmt::format("\"{}\"", kJsonProjectFormat), [](const auto& value) {
            const auto* text = std::get_if<std::string>(&value);
            return text != nullptr && *text == kJsonProjectFormat;
        });
        ours = RequireHead("Version", fmt::format("{}", kJsonProjectVersion),
                           [](const auto& value) {
                               const auto* number = std::get_if<double>(&value);
                               return number != nullptr && *number == kJsonProjectVersion;
                           }) &&
               ours;
        for (const DraftMember& member : head.members) {
            if (ours && member.name != "Format" && member.name != "Version") {
                constexpr std::array<std::string_view, 5> kNames{"Format", "Version", "Project",
                                                                 "PowerSystem", "LoadProfile"};
                TellUnknown(head, member, kNames);
            }
        }
        return ours;
    }

    template <typename Question>
    bool RequireHead(std::string_view name, std::string expected, Question holds) {
        const DraftMember* member = m_draft->head.Find(name);
        if (member == nullptr) {
            TellMissing(m_draft->head, name, std::move(expected));
            return false;
        }
        if (!holds(member->value.Value())) {
            Tell(m_draft->head, *member, std::move(expected));
            return false;
        }
        return true;
    }

    /// Sets the members of a record that its draft has, in the order of the table.
    /// @param exists whether the record has a member of the table at present.
    /// @return true if nothing was wrong with any of them.
    template <typename Record, typename Question>
    bool SetMembers(const DraftRecord& draft, std::span<const Property<Record>> table, Record& record,
                    Question exists) {
        bool sound = true;
        for (const Property<Record>& row : table) {
            const DraftMember* member = draft.Find(row.facts.name);
            if (member == nullptr) {
                continue;
            }
            if (!exists(row)) {
                Tell(member->line, PointerTo(draft.pointer, member->name),
                     "a member that the entry method uses", member->name);
                sound = false;
            } else {
                sound = Set(draft, *member, row, record) && sound;
            }
        }
        return sound;
    }

    template <typename Record>
    void SetMembers(const DraftRecord& draft, std::span<const Property<Record>> table, Record& record) {
        (void)SetMembers(draft, table, record, [](const auto& /*row*/) { return true; });
        (void)TellUnknown(draft, table);
    }

    template <typename Record>
    bool Set(const DraftRecord& draft, const DraftMember& member, const Property<Record>& row,
             Record& record) {
        const std::optional<PropertyValue> value = ConvertedTo(row.facts, member.value);
        if (value && IsGiven(row.facts, *value)) {
            try {
                row.set(record, *value);
                return true;
            } catch (const RaisedError&) {
                // told below, in the words of the table
            }
        }
        Tell(draft, member, ExpectedText(row.facts));
        return false;
    }

    void TellUnknown(const DraftRecord& draft, const DraftMember& member,
                     std::span<const std::string_view> names) {
        Tell(member.line, PointerTo(draft.pointer, member.name),
             // What is counted only needs no words.
             m_faults->Full()
                 ? std::string()
                 : fmt::format("a member that the record has ({})", SuggestionText(member.name, names)),
             DraftValue(member.name).Shown());
    }

    /// Tells of members that no row has a name for.
    /// @return true if there are none.
    template <typename Record>
    bool TellUnknown(const DraftRecord& draft, std::span<const Property<Record>> table,
                     std::string_view besides = {}) {
        bool none = true;
        for (const DraftMember& member : draft.members) {
            if (member.name != besides && FindProperty(table, member.name) == nullptr) {
                TellUnknown(draft, member, NamesOf(table));
                none = false;
            }
        }
        return none;
    }

    void ReadStep(const DraftStep& draft) {
        CLoadProfile& profile = m_records->loadProfile;
        profile.AddLoadStep("", m_records->powerSystem.MaxVoltageDip(), 0);
        CLoadStep& step = profile.LoadStep(profile.NumLoadSteps());
        SetMembers(draft.record, StepProperties(), step);
        for (const DraftRecord& load : draft.loads) {
            if (std::unique_ptr<Load> made = ReadLoad(load)) {
                Add(step, std::move(made), load);
            }
        }
    }

    void Add(CLoadStep& step, std::unique_ptr<Load> load, const DraftRecord& draft) {
        try {
            step.AddLoad(std::move(load));
        } catch (const RaisedError& refusal) {
            Tell(draft.line, draft.pointer, "a step with room", refusal.Description());
        }
    }

    /// The load of a draft; null, and told, if it has a fault.
    std::unique_ptr<Load> ReadLoad(const DraftRecord& draft) {
        const LoadKindRow* kind = KindOf(draft);
        if (kind == nullptr) {
            return nullptr;
        }
        std::unique_ptr<Load> load = kind->make(*m_motors);
        const auto table = LoadProperties(kind->loadType);
        bool sound = SetMembers(draft, table, *load, [&](const auto& row) { return Exists(row, *load); });
        sound = TellUnknown(draft, table, kLoadTypeName) && sound;
        sound = sound && IsSized(draft, *load) && IsWorkedOut(draft, *load);
        if (!sound) {
            return nullptr;
        }
        TellGaps(draft, *load);
        return load;
    }

    const LoadKindRow* KindOf(const DraftRecord& draft) {
        const DraftMember* type = draft.Find(kLoadTypeName);
        const auto kinds = LoadKindRows();
        if (type != nullptr) {
            if (const auto* number = std::get_if<double>(&type->value.Value())) {
                const std::optional<std::int32_t> code = WholeOf(*number);
                if (const LoadKindRow* kind = code ? FindLoadKindRow(*code) : nullptr) {
                    return kind;
                }
            } else if (const auto* text = std::get_if<std::string>(&type->value.Value())) {
                const auto found = std::ranges::find(kinds, *text, &LoadKindRow::name);
                if (found != kinds.end()) {
                    return &*found;
                }
            }
        }
        std::string expected = "a kind of load:";
        for (const LoadKindRow& kind : kinds) {
            expected += fmt::format("{}\"{}\"", kind.loadType == 0 ? " " : ", ", kind.name);
        }
        if (type != nullptr) {
            Tell(draft, *type, std::move(expected));
        } else {
            TellMissing(draft, kLoadTypeName, std::move(expected));
        }
        return nullptr;
    }

    /// Whether the load has the size that its entry method calls for.
    bool IsSized(const DraftRecord& draft, const Load& load) {
        bool sized = true;
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            if (row.facts.method && Exists(row, load) && !IsGiven(row.facts, row.get(load))) {
                TellMissing(draft, row.facts.name, ExpectedText(row.facts));
                sized = false;
            }
        }
        return sized;
    }

    bool IsWorkedOut(const DraftRecord& draft, Load& load) {
        try {
            RebuildPowers(load, m_records->powerSystem.Voltage(), *m_motors);
            return true;
        } catch (const RaisedError& failure) {
            Tell(draft.line, draft.pointer, "a load that can be worked out",
                 fmt::format("{} ({})", failure.Description(), failure.Source()));
            return false;
        }
    }

    /// Tells of what the load's new record lacks and nobody gave.
    void TellGaps(const DraftRecord& draft, const Load& load) {
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            if (Exists(row, load) && !IsGiven(row.facts, row.get(load))) {
                m_gaps->Tell({.line = draft.line,
                              .record = PointerTo(draft.pointer, row.facts.name),
                              .expected = ExpectedText(row.facts),
                              .found = std::string(kNothing)});
            }
        }
    }

    const ProjectDraft* m_draft;
    const MotorConversions* m_motors;
    NewRecords* m_records;
    ProjectFaults* m_faults;
    ProjectFaults* m_gaps;
};

/// Puts new records in the place of a model's, and tells of it in the order in which any project is read.
void PutInPlace(NewRecords& records, const ProjectModel& model, ProjectReadObserver& observer) {
    FailureRegion hooks;  // what an observer raises stops nothing
    model.project = records.project;
    hooks.Run([&] { observer.ProjectRead(); });
    model.powerSystem = records.powerSystem;
    hooks.Run([&] { observer.PowerSystemRead(); });
    model.loadProfile.DeleteAllLoadSteps();
    hooks.Run([&] { observer.StepsCleared(); });
    for (const CLoadStep& step : records.loadProfile) {
        const std::int32_t id =
            model.loadProfile.AddLoadStep(step.Description(), step.MaxVoltageDipOverride(), 0);
        hooks.Run([&] { observer.StepAdded(id); });
    }
    std::int32_t number = 0;
    for (CLoadStep& step : records.loadProfile) {
        CLoadStep& target = model.loadProfile.LoadStep(++number);
        while (step.NumLoads() > 0) {
            const std::int32_t id = target.AddLoad(step.TakeLoad(step.begin()->ID()));
            hooks.Run([&] { observer.LoadAdded(number, id); });
        }
    }
}

void TellAll(const ProjectFaults& faults, ProjectReadObserver& observer) {
    FailureRegion hooks;
    for (const SkippedItem& fault : faults.Kept()) {
        hooks.Run([&] { observer.Skipped(fault); });
    }
}

}  // namespace

void ReadJsonProject(ByteSource& source, std::string_view name, const ProjectModel& model,
                     ProjectReadObserver& observer) {
    const ProjectDraft draft = DraftOf(source);
    NewRecords records(model);
    ProjectFaults faults = draft.faults;
    ProjectFaults gaps;
    DraftReader(draft, model.motors, records, faults, gaps).Read();
    if (faults.Any()) {
        TellAll(faults, observer);
        throw RaisedError(0, "",
                          fmt::format("{} is no project that can be used: {}.", name, FaultsText(faults)));
    }
    PutInPlace(records, model, observer);
    TellAll(gaps, observer);
}

}  // namespace genvara

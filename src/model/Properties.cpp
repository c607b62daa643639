#include "Properties.h"

#include <cstddef>

#include "CodePage.h"
#include "LoadFactory.h"

namespace genvara {
namespace {

template <typename Record>
RecordKind KindOf(std::string_view name, std::span<const Property<Record>> table) {
    RecordKind kind{.name = name, .members = {}};
    for (const Property<Record>& row : table) {
        kind.members.push_back(&row.facts);
    }
    return kind;
}

std::vector<RecordKind> AllKinds() {
    std::vector<RecordKind> kinds{KindOf(record_kind::kProject, ProjectProperties()),
                                  KindOf(record_kind::kPowerSystem, PowerSystemProperties()),
                                  KindOf(record_kind::kDesigner, DesignerProperties()),
                                  KindOf(record_kind::kStep, StepProperties())};
    for (const LoadKindRow& kind : LoadKindRows()) {
        kinds.push_back(KindOf(kind.name, LoadProperties(kind.loadType)));
    }
    return kinds;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

bool Exists(const Property<Load>& property, const Load& load) {
    if (!property.facts.method) {
        return true;
    }
    const Property<Load>* method = FindProperty(LoadProperties(load.LoadType()), kEntryMethodName);
    return method != nullptr && method->get(load) == PropertyValue(*property.facts.method);
}

bool IsGiven(const PropertyFacts& facts, const PropertyValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return facts.range.Hold(*real);
    }
    if (const auto* whole = std::get_if<std::int32_t>(&value)) {
        return facts.range.Hold(*whole);
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return !facts.oneCharacter || DecodeUtf8(WithoutBlanks(*text)).size() == 1;
    }
    return true;
}

const std::vector<RecordKind>& RecordKinds() {
    static const std::vector<RecordKind> kinds = AllKinds();
    return kinds;
}

}  // namespace genvara

#include "ProjectDraft.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

#include "CodePage.h"
#include "JsonSource.h"
#include "NumberText.h"

namespace genvara {
namespace {

/// Numbers are read as long doubles, so that one beyond a double is told and does not end the reading. Their
/// values are taken from their text.
using Json =
    nlohmann::basic_json<std::map, std::vector, std::string, bool, std::int64_t, std::uint64_t, long double>;

constexpr std::size_t kMostFaultsKept = 200;
constexpr std::string_view kNumberInRange = "a number within the range of a double";
/// Of the parser: even a long double cannot hold a number.
constexpr int kNumberBeyondRange = 406;

constexpr std::size_t kLongestShown = 60;  // characters
constexpr std::size_t kLongestCause = 200;

/// A text on one line, with control characters made visible.
std::string OneLine(std::string_view text, std::size_t longest) {
    std::string line;
    std::size_t count = 0;
    for (const char32_t character : DecodeUtf8(text.substr(0, 4 * longest))) {
        if (++count > longest) {
            return line + "...";
        }
        if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            line += fmt::format("\\u{:04x}", static_cast<std::uint32_t>(character));
        } else {
            AppendUtf8(line, character);
        }
    }
    return line;
}

/// What of a parser's message tells the cause.
std::string CauseOf(std::string_view message) {
    const std::size_t tag = message.find("] ");
    message.remove_prefix(tag == std::string_view::npos ? 0 : tag + 2);
    constexpr std::string_view kPlace = "parse error at ";
    if (message.starts_with(kPlace)) {
        const std::size_t place = message.find(": ");
        message.remove_prefix(place == std::string_view::npos ? 0 : place + 2);
    }
    return OneLine(message, kLongestCause);
}

/// Files what a parser meets where it belongs. What lies deeper than a record's members is passed over.
class DraftMaker final : public nlohmann::json_sax<Json> {
  public:
    DraftMaker(ProjectDraft& draft, const JsonSource& source) : m_draft(&draft), m_source(&source) {
        draft.project.pointer = "/Project";
        draft.powerSystem.pointer = "/PowerSystem";
    }

    bool null() override { return Scalar(DraftValue(DraftValue::Kind::Null)); }
    bool boolean(bool truth) override { return Scalar(DraftValue(truth)); }
    bool number_integer(std::int64_t number) override {
        return Scalar(DraftValue(static_cast<double>(number), fmt::format("{}", number)));
    }
    bool number_unsigned(std::uint64_t number) override {
        return Scalar(DraftValue(static_cast<double>(number), fmt::format("{}", number)));
    }
    bool number_float(long double /*number*/, const std::string& token) override {
        // The parser writes the point of the process's locale.
        std::string text = token;
        std::ranges::replace_if(
            text,
            [](char byte) { return std::string_view("0123456789+-eE").find(byte) == std::string_view::npos; },
            '.');
        if (const std::optional<double> number = ParseNumber(text)) {
            return Scalar(DraftValue(*number, text));
        }
        Tell(Here(), std::string(kNumberInRange), OneLine(text, kLongestShown));
        return Passed();
    }
    bool string(std::string& text) override { return Scalar(DraftValue(std::move(text))); }
    bool binary(Json::binary_t& /*bytes*/) override { return true; }

    bool start_object(std::size_t /*count*/) override { return Open(DraftValue::Kind::Object); }
    bool start_array(std::size_t /*count*/) override { return Open(DraftValue::Kind::Array); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(std::string& name) override {
        if (m_passedOver > 0) {
            return true;
        }
        Container& container = m_open.back();
        container.repeated = !container.names.insert(name).second;
        container.name = name;
        m_line = m_source->Line();
        if (container.repeated) {
            Tell(Here(), "each member once", OneLine(name, kLongestShown) + " twice");
        }
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& token,
                     const nlohmann::detail::exception& cause) override {
        m_line = m_source->Line();
        m_draft->brokenOff = true;
        if (m_source->IsCutOff()) {
            Tell(Here(), "a project", "longer than any project");
        } else if (cause.id == kNumberBeyondRange) {
            Tell(Here(), std::string(kNumberInRange), OneLine(token, kLongestShown));
        } else {
            Tell(Here(), "JSON",
                 fmt::format("a fault in line {}, column {}: {}", m_source->Line(), m_source->Column(),
                             CauseOf(cause.what())));
        }
        return false;
    }

  private:
    enum class Place : std::uint8_t { Root, Record, Steps, Step, Loads };

    /// An object or an array that is being read.
    struct Container {
        Place place = Place::Root;
        std::string pointer;
        DraftRecord* record = nullptr;  ///< where members go; of a root and of arrays none
        std::set<std::string> names;    ///< members so far
        std::string name;               ///< the member at hand
        std::size_t count = 0;          ///< elements so far
        bool repeated = false;          ///< the member at hand stood before
    };

    [[nodiscard]] bool InArray() const {
        return m_open.back().place == Place::Steps || m_open.back().place == Place::Loads;
    }

    /// Pointer to the value at hand.
    [[nodiscard]] std::string Here() const {
        if (m_open.empty()) {
            return "";
        }
        const Container& container = m_open.back();
        if (InArray()) {
            return PointerTo(container.pointer, container.count);
        }
        return container.names.empty() ? container.pointer : PointerTo(container.pointer, container.name);
    }

    [[nodiscard]] std::string_view Name() const { return m_open.back().name; }

    void Tell(std::string pointer, std::string expected, std::string found) {
        m_draft->faults.Tell({.line = m_line,
                              .record = std::move(pointer),
                              .expected = std::move(expected),
                              .found = std::move(found)});
    }

    /// A value has been dealt with.
    bool Passed() {
        if (!m_open.empty() && m_passedOver == 0) {
            ++m_open.back().count;
        }
        return true;
    }

    bool Scalar(DraftValue value) {
        if (m_passedOver > 0) {
            return true;
        }
        if (m_open.empty()) {
            Tell("", "a project's object", value.Shown());
            return true;
        }
        if (!InArray() && m_open.back().repeated) {
            return Passed();
        }
        if (const std::optional<std::string_view> wanted = ContainerWanted()) {
            Tell(Here(), std::string(*wanted), value.Shown());
            return Passed();
        }
        File(std::move(value));
        return Passed();
    }

    /// What belongs to the place at hand, if that is no plain value.
    [[nodiscard]] std::optional<std::string_view> ContainerWanted() const {
        constexpr std::string_view kObject = "an object";
        constexpr std::string_view kArray = "an array";
        switch (m_open.back().place) {
            case Place::Root:
                if (Name() == "Project" || Name() == "PowerSystem") {
                    return kObject;
                }
                return Name() == "LoadProfile" ? std::optional(kArray) : std::nullopt;
            case Place::Steps:
            case Place::Loads:
                return kObject;
            case Place::Step:
                return Name() == "Loads" ? std::optional(kArray) : std::nullopt;
            case Place::Record:
                break;
        }
        return std::nullopt;
    }

    void File(DraftValue value) {
        DraftRecord* record = m_open.back().record;
        DraftRecord& target = record != nullptr ? *record : m_draft->head;
        target.members.push_back({.name = std::string(Name()), .value = std::move(value), .line = m_line});
    }

    bool Open(DraftValue::Kind kind) {
        if (m_passedOver > 0) {
            ++m_passedOver;
            return true;
        }
        if (m_open.empty()) {
            if (kind == DraftValue::Kind::Object) {
                m_open.push_back({});
                return true;
            }
            Tell("", "a project's object", "an array");
            m_passedOver = 1;
            return true;
        }
        m_line = InArray() ? m_source->Line() : m_line;
        std::optional<Container> inside;
        if (InArray() || !m_open.back().repeated) {
            inside = ContainerOf(kind);
        }
        if (inside) {
            m_open.push_back(std::move(*inside));
        } else {
            m_passedOver = 1;
        }
        return true;
    }

    /// The container that begins here; nothing, with the fault told or filed, if none belongs here.
    std::optional<Container> ContainerOf(DraftValue::Kind kind) {
        const std::optional<std::string_view> wanted = ContainerWanted();
        if (!wanted) {
            File(DraftValue(kind));
            return std::nullopt;
        }
        const bool fits = (*wanted == "an object") == (kind == DraftValue::Kind::Object);
        if (!fits) {
            Tell(Here(), std::string(*wanted), DraftValue(kind).Shown());
            return std::nullopt;
        }
        return Inside();
    }

    [[nodiscard]] Container Inside() {
        Container inside;
        inside.place = Place::Record;
        inside.pointer = Here();
        switch (m_open.back().place) {
            case Place::Root:
                if (Name() == "LoadProfile") {
                    inside.place = Place::Steps;
                } else {
                    inside.record = Name() == "Project" ? &m_draft->project : &m_draft->powerSystem;
                }
                break;
            case Place::Steps:
                inside.place = Place::Step;
                inside.record = &m_draft->steps.emplace_back().record;
                break;
            case Place::Step:
                inside.place = Place::Loads;
                break;
            case Place::Loads:
                inside.record = &m_draft->steps.back().loads.emplace_back();
                break;
            case Place::Record:
                break;
        }
        if (inside.record != nullptr) {
            inside.record->pointer = inside.pointer;
            inside.record->line = m_line;
        }
        return inside;
    }

    bool Close() {
        if (m_passedOver > 0) {
            if (--m_passedOver == 0) {
                return Passed();
            }
            return true;
        }
        m_open.pop_back();
        return Passed();
    }

    ProjectDraft* m_draft;
    const JsonSource* m_source;
    std::vector<Container> m_open;
    std::size_t m_passedOver = 0;  ///< containers open that nobody looks into
    std::int64_t m_line = 1;
};

}  // namespace

void ProjectFaults::Tell(SkippedItem fault) {
    if (Full()) {
        ++m_notKept;
    } else {
        m_kept.push_back(std::move(fault));
    }
}

bool ProjectFaults::Full() const noexcept {
    return m_kept.size() >= kMostFaultsKept;
}

std::string FaultsText(const ProjectFaults& faults) {
    std::string text;
    for (const SkippedItem& fault : faults.Kept()) {
        text += fmt::format("{}{}: expected {}, found {}", text.empty() ? "" : "; ",
                            fault.record.empty() ? "the text" : fault.record, fault.expected, fault.found);
    }
    return faults.NotKept() == 0 ? text : fmt::format("{}; and {} more", text, faults.NotKept());
}

std::string DraftValue::Shown() const {
    struct Words {
        std::string operator()(Kind kind) const {
            constexpr std::array<std::string_view, 3> kKinds{"null", "an object", "an array"};
            return std::string(kKinds.at(static_cast<std::size_t>(kind)));
        }
        std::string operator()(bool truth) const { return truth ? "true" : "false"; }
        std::string operator()(double /*number*/) const { return OneLine(*token, kLongestShown); }
        std::string operator()(const std::string& text) const {
            return fmt::format("\"{}\"", OneLine(text, kLongestShown));
        }
        const std::string* token;
    };
    return std::visit(Words{&m_token}, m_held);
}

const DraftMember* DraftRecord::Find(std::string_view name) const noexcept {
    const auto found = std::ranges::find(members, name, &DraftMember::name);
    return found == members.end() ? nullptr : &*found;
}

std::string PointerTo(std::string_view pointer, std::string_view member) {
    std::string whole(pointer);
    whole += '/';
    for (const char byte : OneLine(member, kLongestShown)) {
        if (byte == '~') {
            whole += "~0";
        } else if (byte == '/') {
            whole += "~1";
        } else {
            whole += byte;
        }
    }
    return whole;
}

std::string PointerTo(std::string_view pointer, std::size_t index) {
    return fmt::format("{}/{}", pointer, index);
}

ProjectDraft DraftOf(ByteSource& source) {
    ProjectDraft draft;
    JsonSource json(source);
    DraftMaker maker(draft, json);
    (void)Json::sax_parse(JsonIterator(json), JsonIterator(), &maker);
    return draft;
}

}  // namespace genvara

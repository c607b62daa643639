#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "ProjectFile.h"
#include "ProjectSource.h"

namespace genvara {

/// What is wrong with a JSON project; the place of each fault is a JSON pointer.
class ProjectFaults {
  public:
    /// Of a text with more faults than anybody reads the first are kept, and the others counted.
    void Tell(SkippedItem fault);

    [[nodiscard]] bool Any() const noexcept { return !m_kept.empty(); }
    /// Whether a further fault is only counted.
    [[nodiscard]] bool Full() const noexcept;
    [[nodiscard]] const std::vector<SkippedItem>& Kept() const noexcept { return m_kept; }
    [[nodiscard]] std::size_t NotKept() const noexcept { return m_notKept; }

  private:
    std::vector<SkippedItem> m_kept;
    std::size_t m_notKept = 0;
};

/// The faults behind each other: "/PowerSystem/Freq: expected a whole number, found true; ..."
[[nodiscard]] std::string FaultsText(const ProjectFaults& faults);

/// A value as a JSON project states it.
class DraftValue {
  public:
    /// What is no value of a member at all.
    enum class Kind : std::uint8_t { Null, Object, Array };
    using Held = std::variant<Kind, bool, double, std::string>;

    DraftValue() : m_held(Kind::Null) {}
    explicit DraftValue(Kind kind) : m_held(kind) {}
    explicit DraftValue(bool truth) : m_held(truth) {}
    explicit DraftValue(std::string text) : m_held(std::move(text)) {}
    /// @param token the number as it stands, which messages show.
    DraftValue(double number, std::string token) : m_held(number), m_token(std::move(token)) {}

    [[nodiscard]] const Held& Value() const noexcept { return m_held; }
    /// The value for a message: short, on one line, without control characters.
    [[nodiscard]] std::string Shown() const;

  private:
    Held m_held;
    std::string m_token;
};

/// A member of a record.
struct DraftMember {
    std::string name;
    DraftValue value;
    std::int64_t line = 0;
};

/// A record: its place as a JSON pointer, and its members in the order of the file.
struct DraftRecord {
    std::string pointer;
    std::int64_t line = 0;
    std::vector<DraftMember> members;

    /// The member of a name, or null.
    [[nodiscard]] const DraftMember* Find(std::string_view name) const noexcept;
};

struct DraftStep {
    DraftRecord record;
    std::vector<DraftRecord> loads;
};

/// A JSON project, taken apart but not yet looked at: any member may be unknown or of the wrong type.
struct ProjectDraft {
    DraftRecord head;  ///< format and version
    DraftRecord project;
    DraftRecord powerSystem;
    std::vector<DraftStep> steps;
    /// What cannot be a project whatever its members mean: bad syntax, a member that stands twice, an object
    /// where an array belongs.
    ProjectFaults faults;
    bool brokenOff = false;  ///< the text came to no end: what is missing may have been meant to follow
};

/// Takes a JSON text apart, at a cost that grows with its size alone, however deep it is nested.
[[nodiscard]] ProjectDraft DraftOf(ByteSource& source);

/// A JSON pointer to a member of what another points to.
[[nodiscard]] std::string PointerTo(std::string_view pointer, std::string_view member);
[[nodiscard]] std::string PointerTo(std::string_view pointer, std::size_t index);

}  // namespace genvara

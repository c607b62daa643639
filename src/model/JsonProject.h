#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "DateTime.h"
#include "ProjectFile.h"
#include "ProjectModel.h"
#include "ProjectSource.h"

/// A project in JSON: every input of every record by its name, made from the table of properties.
namespace genvara {

inline constexpr std::string_view kJsonProjectFormat = "genvara-project";
inline constexpr std::int32_t kJsonProjectVersion = 1;

/// Fills a model from a JSON project, whole or not at all. Members that are missing keep what a new record
/// holds, a step's dip that of the site; powers that follow from a load's inputs are worked out anew.
///
/// The observer is told of everything that is wrong, all of it at once, each at its JSON pointer; and of a
/// project that is read, as `ReadProject` tells it. A load whose new record lacks what its figures need (a
/// motor's starting power, for one) is read as it is, and told.
/// @param name what messages call the project by.
/// @throws RaisedError 0 with one sentence that names the project and its faults; the model is then
///         as before.
void ReadJsonProject(ByteSource& source, std::string_view name, const ProjectModel& model,
                     ProjectReadObserver& observer);

/// The project as JSON, in UTF-8, readably indented, members in the order of the table. A member that was
/// never given, and one that its load's entry method does not use, is left out.
[[nodiscard]] std::string RenderJsonProject(const ProjectView& project, const DateTime& savedAt);

/// The schema of JSON projects, draft 2020-12, as a JSON text.
[[nodiscard]] std::string JsonProjectSchema();

}  // namespace genvara

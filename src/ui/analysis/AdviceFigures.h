#pragma once

#include "Advise.h"
#include "TextGrid.h"

namespace genvara {

/// A row for each advice: what to change, the set that then does, what it saves, how tight it then is.
/// @param wanted set that the reader asks about: advice that lets it do is set in bold; may be null
[[nodiscard]] TextGrid AdviceGrid(const AdviceList& list, const ChosenSet* wanted);

/// Whether an advice lets a set do.
[[nodiscard]] bool Reaches(const Advice& advice, const ChosenSet& set);

/// A row for each thing that an advice changes: what, from, to. Members are named by their steps and loads.
[[nodiscard]] TextGrid ChangesGrid(const Advice& advice, const StudyProject& project);

/// Whether an advice changes the program's own most loading, which is no part of the project.
[[nodiscard]] bool ChangesOptions(const Advice& advice);

}  // namespace genvara

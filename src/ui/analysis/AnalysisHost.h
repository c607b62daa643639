#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "Variation.h"

class QWidget;

namespace genvara {

/// Whose project is analysed.
class AnalysisHost {
  public:
    AnalysisHost() = default;
    virtual ~AnalysisHost() = default;
    AnalysisHost(const AnalysisHost&) = delete;
    AnalysisHost& operator=(const AnalysisHost&) = delete;
    AnalysisHost(AnalysisHost&&) = delete;
    AnalysisHost& operator=(AnalysisHost&&) = delete;

    /// A copy of the project as it stands, with what is entered on the panels; nothing while something that
    /// is entered there cannot be taken.
    [[nodiscard]] virtual std::optional<StudyProject> ProjectAsItStands() = 0;

    /// Puts site and load profile of a varied project in the place of those at hand, under a name that can be
    /// undone.
    virtual void TakeVariation(const QString& name, const StudyProject& varied) = 0;

    /// Opens the manual where it is about the analysis, beside the window that asks.
    virtual void ShowAnalysisHelp(QWidget& owner) = 0;
};

}  // namespace genvara

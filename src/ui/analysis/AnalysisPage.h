#pragma once

#include <QWidget>
#include <vector>

#include "AnalysisResult.h"
#include "PageFlow.h"

namespace genvara {

/// A page of the analysis. All of them show the same project and the same set.
class AnalysisPage : public QWidget {
    Q_OBJECT

  public:
    explicit AnalysisPage(const QString& name, QWidget* parent = nullptr) : QWidget(parent) {
        setObjectName(name);
    }

    /// Shows a project as it stands, and one of its sets; -1 for none.
    virtual void Show(const AnalysisResult& result, int set) = 0;
    /// Shows another set of the same project.
    virtual void Select(int set) = 0;
    /// The project has changed: what is shown no longer holds. The next `Show` ends that.
    virtual void Stale() = 0;

  signals:
    /// Another set was chosen.
    void SetChosen(int set);
    /// The steps of a test are asked for.
    void StepsAsked(int set, int test);
};

}  // namespace genvara

#pragma once

#include <QApplication>
#include <QTabWidget>
#include <QTest>

#include "AdvicePage.h"
#include "ChoiceBox.h"
#include "GridView.h"
#include "OrderPage.h"
#include "StudyDesk.h"
#include "WhatIfPage.h"
#include "WindowFixture.h"
#include "WorkOutLoads.h"
#include "frmAnalysis.h"

namespace genvara {

/// The analysis beside the main window, and the same studies asked for directly.
class AnalysisTest : public WindowTest {
  protected:
    static constexpr int kPatience = 60'000;  // milliseconds

    frmAnalysis& Analysis() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<frmAnalysis*>(widget)) {
                return *window;
            }
        }
        throw std::runtime_error("no analysis");
    }
    /// Opens a sample and its analysis, and waits for it.
    void Analyse(const std::string& sample) {
        Open(Sample(sample));
        Run("mnuToolsAnalysis");
        Settle();
    }
    void Settle() {
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return Analysis().IsFresh() && !Page<AdvicePage>("pagAdvice").Study().IsWorking(); },
            kPatience));
    }
    template <typename Kind>
    Kind& Page(const char* name) {
        return Find<Kind>(Analysis(), name);
    }
    void ShowPage(const char* name) {
        Find<QTabWidget>(Analysis(), "tabAnalysis").setCurrentWidget(&Find<QWidget>(Analysis(), name));
        QCoreApplication::processEvents();
    }

    /// The project at hand, and what it is studied by, apart from the window.
    StudyProject Project() {
        auto project = Window().ProjectAsItStands();
        if (!project) {
            throw std::runtime_error("the project cannot be taken");
        }
        return *project;
    }
    const StudyTables& Tables() {
        if (!m_desk) {
            m_desk = std::make_unique<StudyDesk>(App().Catalogue());
        }
        return m_desk->Tables();
    }
    Explanation Explained(const StudyProject& project) {
        return Explain(Tables().candidates.Of(FilterOf(project.powerSystem)), project.powerSystem,
                       project.loadProfile, project.limits, {}, m_goOn);
    }

    const StopFlag m_goOn = false;

  private:
    std::unique_ptr<StudyDesk> m_desk;
};

}  // namespace genvara

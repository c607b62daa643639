#pragma once

#include <QLabel>

#include "CLoadProfile.h"
#include "CPwrSys.h"

class QStatusBar;
class QTimer;

namespace genvara {

/// What the whole load draws, for the status bar: running power and the largest start of a load. A message of
/// the bar comes first: the text becomes shorter where there is no room beside it, and goes if need be.
class ProfileStatus final : public QLabel {
    Q_OBJECT

  public:
    /// All of them outlive the label, which adds itself to the bar.
    ProfileStatus(QStatusBar& bar, const CLoadProfile& profile, const CPwrSys& site);

    /// Works the figures out anew once the program is idle.
    void Refresh();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowFigures();
    void Fit();
    [[nodiscard]] int Room() const;

    QStatusBar* m_bar;
    const CLoadProfile* m_profile;
    const CPwrSys* m_site;
    QTimer* m_settling;
    QString m_running;
    QString m_whole;  ///< with the largest start
};

}  // namespace genvara

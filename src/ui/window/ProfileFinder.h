#pragma once

#include <QFrame>
#include <vector>

#include "CLoadProfile.h"
#include "ProjectMoment.h"

class QLabel;
class QLineEdit;

namespace genvara {

class ProfileTree;

/// A bar under the load profile that finds steps and loads by name, description or kind, while one types. It
/// is there once it has been asked for, until Escape.
class ProfileFinder final : public QFrame {
    Q_OBJECT

  public:
    /// Both outlive the bar.
    ProfileFinder(ProfileTree& tree, const CLoadProfile& profile, QWidget* parent = nullptr);

    /// Shows the bar with the text that was sought last, to be typed over.
    void Open();
    /// Selects the next one, or the one before, around the ends of the profile; opens the bar if there is
    /// nothing to look for.
    void Next() { GoOn(1); }
    void Previous() { GoOn(-1); }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Build();
    void Close();
    void GoOn(int by);
    /// @param by 1 or -1; 0 for the one at hand, if it is one.
    void Seek(int by);
    [[nodiscard]] std::vector<ProfilePlace> Rows() const;
    [[nodiscard]] bool Matches(ProfilePlace row, const QString& sought) const;
    void Tell(const QString& text);

    ProfileTree* m_tree;
    const CLoadProfile* m_profile;
    QLineEdit* m_text;
    QLabel* m_found;
};

}  // namespace genvara

#pragma once

#include <QFrame>
#include <array>

#include "EntryNumbers.h"
#include "ProfileColumns.h"
#include "ProfilePowers.h"

class QHeaderView;
class QLabel;

namespace genvara {

/// The last row of a load profile: what all steps draw together, under the columns of its tree. It stays
/// where it is while the tree is scrolled.
class ProfileTotals final : public QFrame {
    Q_OBJECT

  public:
    /// @param header of the tree above; outlives the row.
    ProfileTotals(const QHeaderView& header, QWidget* parent = nullptr);

    /// Works the totals out anew.
    void Show(const CLoadProfile& profile);
    /// The longest of the texts, a column's width.
    [[nodiscard]] QString Widest() const;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void FollowHeader();
    void Place(QLabel& label, int column) const;

    const QHeaderView* m_header;
    EntryNumbers m_numbers;
    QLabel* m_caption;
    std::array<QLabel*, kPowerKinds.size()> m_powers{};
};

}  // namespace genvara

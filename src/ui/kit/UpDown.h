#pragma once

#include <QWidget>
#include <cstdint>

#include "EntryField.h"
#include "Stepping.h"

class QToolButton;

namespace genvara {

/// The two arrows beside a number field, its buddy. Arrow keys in the buddy do the same.
class UpDown : public QWidget {
    Q_OBJECT

  public:
    using Range = StepRange;

    UpDown(const QString& name, EntryField& buddy, Range range, QWidget* parent = nullptr);

    [[nodiscard]] const Range& Bounds() const noexcept { return m_range; }

    /// The field beside the arrows.
    [[nodiscard]] EntryField* Buddy() const noexcept { return m_buddy; }

  signals:
    /// The arrows have changed the buddy's text.
    void Stepped(std::int32_t value);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Step(std::int32_t steps);
    QToolButton* AddArrow(Qt::ArrowType arrow, std::int32_t steps);

    EntryField* m_buddy;
    Range m_range;
};

}  // namespace genvara

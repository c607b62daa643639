#pragma once

#include <QFrame>

class QLabel;

namespace genvara {

/// A bar at the top of a panel that keeps saying something until it no longer holds. Empty, it is not there.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(const QString& name, QWidget* parent = nullptr);

    void Text(const QString& text);
    [[nodiscard]] QString Text() const;

  private:
    QLabel* m_text;
};

}  // namespace genvara

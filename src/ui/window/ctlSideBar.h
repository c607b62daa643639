#pragma once

#include <QIcon>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CBarItem.h"

namespace genvara {

/// A column of pictures with titles that switch the panels. The picture under the pointer, or above the title
/// under it, gets a raised box, a sunken one while the button is down; the keyboard has a frame of its own
/// around the item that it stands on. To a screen reader each item is a button.
class ctlSideBar : public QWidget {
    Q_OBJECT

  public:
    explicit ctlSideBar(const QString& name, QWidget* parent = nullptr);

    /// The item that the pointer or the keyboard is on, from 1; 0 for none.
    [[nodiscard]] int ActiveCtrl() const noexcept { return m_hovered; }

    /// Adds an item under a key of its own.
    /// @throws RaisedError 457 if the key is there already, from "ctlSideBar::AddItem".
    const CBarItem& AddItem(const std::string& key, const std::string& title, int iconIndex,
                            std::int32_t raiseValue);

    // Pictures by index. The large ones are shown; the small ones where there are no large ones, which the
    // program does not set.
    void SmallIcons(std::vector<QIcon> icons);
    [[nodiscard]] const std::vector<QIcon>& SmallIcons() const noexcept { return m_smallIcons; }
    void LargeIcons(std::vector<QIcon> icons);
    [[nodiscard]] const std::vector<QIcon>& LargeIcons() const noexcept { return m_largeIcons; }

    /// The key that does what a click on an item does, for its tip and for screen readers. An item without
    /// one is left out.
    void Keys(std::vector<QString> keys);

    /// Marks the item whose panel is shown.
    void ShowCurrent(std::int32_t raiseValue);

    // Items by number, from 1.
    [[nodiscard]] int CountItems() const noexcept { return static_cast<int>(m_items.size()); }
    [[nodiscard]] const CBarItem& Item(int item) const {
        return *m_items.at(static_cast<std::size_t>(item - 1));
    }
    [[nodiscard]] QString KeyOf(int item) const;
    [[nodiscard]] bool IsCurrent(int item) const { return Item(item).RaiseValue == m_current; }
    /// Picture and title of an item.
    [[nodiscard]] QRect ItemRect(int item) const;
    /// The item of the keyboard.
    [[nodiscard]] int StandsOn() const noexcept { return m_standing; }
    void Stand(int item);
    /// Does what a click on an item does, unless a field holds the focus.
    void Press(int item);

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    /// An item was clicked.
    void ItemClicked(std::int32_t raiseValue);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void FitWidth();
    [[nodiscard]] QRectF IconBox(std::size_t index) const;
    [[nodiscard]] QRectF TitleBox(std::size_t index) const;
    [[nodiscard]] QFont TitleFont(std::size_t index) const;
    [[nodiscard]] int ItemAt(const QPointF& point) const;
    void Hover(int item, bool down);
    void Raise(int item);
    void PaintItem(QPainter& painter, std::size_t index) const;
    void PaintBox(QPainter& painter, std::size_t index) const;

    std::vector<std::unique_ptr<CBarItem>> m_items;
    std::vector<QIcon> m_smallIcons;
    std::vector<QIcon> m_largeIcons;
    std::vector<QString> m_keys;
    int m_hovered = 0;   ///< from 1
    int m_standing = 1;  ///< item of the keyboard, from 1
    bool m_down = false;
    bool m_pressed = false;  ///< a mouse button went down on the bar
    std::int32_t m_current = -1;
};

}  // namespace genvara

#pragma once

#include <QTreeWidget>
#include <cstdint>
#include <memory>

#include "ProfileCells.h"
#include "ProfileColumns.h"

namespace genvara {

/// Steps and their loads, two levels deep, with what each of them draws. An empty tree says in its ground how
/// to begin.
class ProfileTree : public QTreeWidget {
    Q_OBJECT

  public:
    /// @param profile what the rows show; outlives the tree.
    ProfileTree(const QString& name, const CLoadProfile& profile, QWidget* parent = nullptr);

    /// Inserts a step at a position from 1, or at the end, expanded.
    QTreeWidgetItem* InsertStep(std::int32_t position, const QString& text, std::int32_t stepId);
    /// Adds a load at the end of a step.
    static QTreeWidgetItem* AddLoad(QTreeWidgetItem& step, const QString& text, std::int32_t loadId,
                                    std::int32_t loadType);

    /// The node of a load of the step at a position; null if there is none.
    [[nodiscard]] QTreeWidgetItem* FindLoad(std::int32_t stepPosition, std::int32_t loadId) const;

    /// Takes a node away and selects its neighbour, or its step, without a signal: until the caller is done,
    /// positions in the tree are not those of the profile.
    void Remove(QTreeWidgetItem& node);

    /// Hidden cells: the ID of a step, and of a load.
    [[nodiscard]] static std::int32_t StepID(const QTreeWidgetItem& step);
    [[nodiscard]] static std::int32_t LoadID(const QTreeWidgetItem& load);
    static void LoadID(QTreeWidgetItem& load, std::int32_t id);

    /// Which step or load a node stands for.
    [[nodiscard]] static ProfilePlace PlaceOf(const QTreeWidgetItem& node);
    [[nodiscard]] const ProfileCells& Cells() const noexcept { return m_cells; }
    /// Shows figures that have changed.
    /// @param widest the longest of them.
    void ShowFigures(const QString& widest);

    /// The selected node, or null.
    [[nodiscard]] QTreeWidgetItem* Selected() const;
    [[nodiscard]] static bool IsStep(const QTreeWidgetItem& node) { return node.parent() == nullptr; }
    /// Position of a node's step, from 1.
    [[nodiscard]] std::int32_t StepPosition(const QTreeWidgetItem& node) const;

    /// What a node is dragged as; it means something to this program alone.
    [[nodiscard]] static std::unique_ptr<QMimeData> DragData(const QTreeWidgetItem& node);

  signals:
    /// A step or a load was dropped where it is not yet.
    /// @param position of the step that a load was dropped on; where a step is to stand. From 1.
    void Dropped(genvara::ProfilePlace what, std::int32_t position);
    /// Enter or a double click on a node.
    void EditAsked();
    /// The delete key on a node.
    void DeleteAsked();

  protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void BuildColumns();
    void FitColumns();

    /// What a drop would do; nothing where it would do nothing.
    struct Drop {
        ProfilePlace what;
        std::int32_t position = 0;
        QRect mark;  ///< a step's row, or a line between two
    };
    [[nodiscard]] Drop DropOf(const QDropEvent& event) const;
    void MarkDrop(const QRect& mark);
    void PaintDropMark();

    QRect m_dropMark;
    ProfileCells m_cells;
    QString m_widest;  ///< figure
};

}  // namespace genvara

#pragma once

#include <QTreeWidget>
#include <cstdint>

namespace genvara {

/// Columns of the tree.
namespace profile_column {
inline constexpr int kText = 0;    ///< description of a step, name of a load
inline constexpr int kNumber = 1;  ///< position of a step, from 1
}  // namespace profile_column

/// Steps and their loads, two levels deep. An empty tree says in its ground how to begin.
class ProfileTree : public QTreeWidget {
    Q_OBJECT

  public:
    explicit ProfileTree(const QString& name, QWidget* parent = nullptr);

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

    /// The selected node, or null.
    [[nodiscard]] QTreeWidgetItem* Selected() const;
    [[nodiscard]] static bool IsStep(const QTreeWidgetItem& node) { return node.parent() == nullptr; }
    /// Position of a node's step, from 1.
    [[nodiscard]] std::int32_t StepPosition(const QTreeWidgetItem& node) const;

  signals:
    /// Enter or a double click on a node.
    void EditAsked();
    /// The delete key on a node.
    void DeleteAsked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void BuildColumns();
};

}  // namespace genvara

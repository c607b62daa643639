#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "Paths.h"
#include "Variation.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace genvara {

/// Chooses a value of a project and what it runs through.
class AxisRow final : public QWidget {
    Q_OBJECT

  public:
    /// @param name object name; those of its fields are made of it.
    AxisRow(const QString& name, const QString& caption, bool isOptional, QWidget* parent = nullptr);

    /// Offers the values of a project; what was chosen stays, as far as it is still there.
    void Offer(const StudyProject& project);

    /// What is chosen as in "PowerSystem.Altitude=0:3000:100"; nothing where nothing is chosen.
    /// @throws RaisedError 13 with a sentence for a field that holds no number.
    [[nodiscard]] std::optional<std::string> Text() const;
    /// Whether anything is chosen.
    [[nodiscard]] bool IsChosen() const { return Chosen() != nullptr; }
    /// Whether a number is chosen, with from, to and by.
    [[nodiscard]] bool IsRange() const;

    /// Chooses a value by its path, as in "PowerSystem.Altitude".
    void Choose(const std::string& path);

  signals:
    void Changed();

  private:
    /// A value that may vary.
    struct Member {
        std::string path;
        PropertyFacts facts;
        PropertyValue now;
    };
    void FillMembers();
    /// @param withRange with from, to and by of its own, in place of those that stand there.
    void ShowMember(bool withRange);
    [[nodiscard]] const Member* Chosen() const;
    [[nodiscard]] std::string NumberIn(const QLineEdit& field, const QString& caption) const;

    bool m_isOptional;
    std::vector<std::vector<Member>> m_records;  ///< by the rows of the first list
    std::string m_path;                          ///< that is chosen
    QComboBox* m_record;
    QComboBox* m_member;
    QWidget* m_range;
    QLineEdit* m_from;
    QLineEdit* m_to;
    QLineEdit* m_by;
    QLabel* m_now;
};

}  // namespace genvara

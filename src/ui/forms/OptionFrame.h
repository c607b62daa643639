#pragma once

#include <QGroupBox>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

class QBoxLayout;
class QRadioButton;

namespace genvara {

/// A framed group of option buttons, each of which stands for a code. A selection that the program makes
/// counts as a click, like one made by hand; clicking what is selected does nothing.
class OptionFrame : public QGroupBox {
    Q_OBJECT

  public:
    struct Option {
        const char* name;
        QString caption;
        std::int32_t code;
    };

    OptionFrame(const QString& name, const QString& title, const std::vector<Option>& options,
                Qt::Orientation orientation = Qt::Vertical);

    /// Code of the selected button; nothing while none is.
    [[nodiscard]] std::optional<std::int32_t> Code() const;
    [[nodiscard]] bool IsSelected(std::int32_t code) const { return Code() == code; }
    /// Selects the button of a code, enabled or not; a code that no button has leaves the selection.
    void Select(std::int32_t code) const;
    /// Enables or disables the button of a code.
    void Enable(std::int32_t code, bool enabled) const;
    [[nodiscard]] QRadioButton* Button(std::int32_t code) const;

  signals:
    void Clicked(std::int32_t code);

  private:
    struct Coded {
        std::int32_t code;
        QRadioButton* button;
    };
    std::vector<Coded> m_buttons;
};

}  // namespace genvara

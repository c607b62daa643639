#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

/// Texts between the model, which holds UTF-8, and the widgets.
namespace genvara {

[[nodiscard]] QString ToQt(std::string_view text);
[[nodiscard]] std::string FromQt(const QString& text);

/// A caption of the string table.
[[nodiscard]] QString Caption(std::int32_t id);

/// A caption without the mark of its mnemonic: "&Browse..." becomes "Browse...".
[[nodiscard]] QString WithoutMnemonic(QString caption);

}  // namespace genvara

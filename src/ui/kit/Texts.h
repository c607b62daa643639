#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

/// Texts between the model, which holds UTF-8, and the widgets.
namespace genvara {

[[nodiscard]] QString ToQt(std::string_view text);
[[nodiscard]] std::string FromQt(const QString& text);

/// A text as it is entered, with typographic quotes in place of double quotes, which end a text in a project
/// file.
/// @param before what stands before it.
[[nodiscard]] QString WithTypographicQuotes(const QString& text, const QString& before);

/// A caption of the string table.
[[nodiscard]] QString Caption(std::int32_t id);

/// A caption without the mark of its mnemonic: "&Browse..." becomes "Browse...".
[[nodiscard]] QString WithoutMnemonic(QString caption);

}  // namespace genvara

#include "Texts.h"

#include "StringTable.h"
#include "TypographicQuotes.h"

namespace genvara {

QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromQt(const QString& text) {
    return text.toStdString();
}

QString WithTypographicQuotes(const QString& text, const QString& before) {
    const bool opens =
        before.isEmpty() || before.back().isSpace() || QString("([{/-").contains(before.back());
    return ToQt(TypographicQuotes(FromQt(text), opens));
}

QString Caption(std::int32_t id) {
    return ToQt(StringTable::Text(id));
}

QString WithoutMnemonic(QString caption) {
    return caption.remove('&');
}

}  // namespace genvara

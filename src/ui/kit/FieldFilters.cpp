// The filters of entry fields, and their common check.

#include "EntryField.h"

namespace genvara {
namespace key_filters {

EntryField::KeyFilter Numeric() {
    return [separator = DecimalSeparator()](const std::string& text, std::size_t, char32_t key) {
        return NumericKeyFilter(text, key, separator);
    };
}

EntryField::KeyFilter Digits() {
    return [](const std::string&, std::size_t, char32_t key) { return DigitKeyFilter(key); };
}

EntryField::KeyFilter UpTo(std::size_t most, EntryField::KeyFilter filter) {
    return [most, filter = std::move(filter)](const std::string& text, std::size_t selected, char32_t key) {
        const bool fits = MaxLengthKeyFilter(text.size(), selected, most, key) == KeyVerdict::Pass;
        return fits ? filter(text, selected, key) : KeyVerdict::Refuse;
    };
}

EntryField::KeyFilter DigitsUpTo(std::size_t most) {
    return UpTo(most, Digits());
}

EntryField::KeyFilter NonZeroDigits() {
    return
        [](const std::string& text, std::size_t, char32_t key) { return NonZeroDigitKeyFilter(text, key); };
}

EntryField::KeyFilter Signed() {
    return [](const std::string&, std::size_t, char32_t) { return KeyVerdict::Pass; };
}

}  // namespace key_filters

bool ValidateNumericText(EntryField& field) {
    const bool bad = EntryNumbers().IsBad(field.Content());
    if (bad) {
        const QString complaint = field.Complaint();
        field.ShowError(complaint.isEmpty() ? QObject::tr("A number must be entered.") : complaint);
    } else {
        field.ClearError();
    }
    return bad;
}

}  // namespace genvara

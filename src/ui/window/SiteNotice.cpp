#include "SiteNotice.h"

#include <QCoreApplication>
#include <QStringList>

#include "panPwrSys.h"

namespace genvara {
namespace {

QString Words(const char* text) {
    return QCoreApplication::translate("SiteNotice", text);
}

/// What the project came with, as in "a voltage of 347 V".
QString Held(const UnofferedChoice& choice) {
    switch (choice.choice) {
        case SiteChoice::Voltage:
            return Words("a voltage of %1 V").arg(choice.value);
        case SiteChoice::Connection:
            return Words("the connection code %1").arg(choice.value);
        case SiteChoice::Frequency:
            return Words("a frequency of %1 Hz").arg(choice.value);
        case SiteChoice::Fuel:
            return Words("the fuel code %1").arg(choice.value);
        case SiteChoice::RiseDuty:
            return Words("the temperature rise code %1").arg(choice.value);
    }
    return {};
}

bool IsOfTheCatalogue(SiteChoice choice) {
    return choice == SiteChoice::Voltage || choice == SiteChoice::Connection;
}

}  // namespace

QString SiteNotice(const std::vector<UnofferedChoice>& choices, ChoicesFrom from, const panPwrSys& panel) {
    QStringList lines;
    for (const UnofferedChoice& choice : choices) {
        const QString source = from == ChoicesFrom::File ? Words("The file of this project came with %1")
                                                         : Words("The defaults of new projects hold %1");
        const QString lacking = IsOfTheCatalogue(choice.choice) ? Words("which the catalogue does not have")
                                                                : Words("which the program does not know");
        const QString shown = panel.Shown(choice.choice);
        const QString taken =
            shown.isEmpty()
                ? Words("nothing is shown in its place. Choose on the power system panel.")
                : Words("%1 is taken in its place until you choose on the power system panel.").arg(shown);
        lines += QString("%1, %2: %3").arg(source.arg(Held(choice)), lacking, taken);
    }
    return lines.join('\n');
}

}  // namespace genvara

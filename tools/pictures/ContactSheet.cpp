// Draws every picture, enabled, disabled and selected, on light and dark grounds, onto one sheet to be looked
// at.
//
//   picture_sheet SHEET.png [RATIO]     RATIO: device pixels to a pixel, 1 when it is not given

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <array>

#include "Pictures.h"

namespace {

struct Family {
    int size;  // [px] the grid that it is drawn on
    QStringList names;
};

const QStringList kTree = {"step", "airconditioning", "charger", "lighting", "medical",
                           "misc", "motor",           "office",  "ups",      "vfd"};
const std::array kFamilies = {
    Family{24, {"new", "open", "save", "print", "export", "cut", "copy", "paste", "help"}},
    Family{48, {"project", "powersystem", "loadprofile", "recommend"}},
    Family{16, kTree},
    Family{20, kTree},
};
const std::array kGrounds = {QColor("#ffffff"), QColor("#efefef"), QColor("#2b2b2b")};
constexpr std::array kModes = {QIcon::Normal, QIcon::Disabled, QIcon::Selected};
constexpr int kWidth = 400;      // [px]
constexpr int kRowsOfOne = 192;  // [px] the four families, one below the other
constexpr int kGap = 14;         // [px]

void DrawFamilies(QPainter& painter, QPoint at, QIcon::Mode mode) {
    for (const Family& family : kFamilies) {
        QPoint place = at;
        for (const QString& name : family.names) {
            const QIcon icon = genvara::Picture(name.toStdString());
            icon.paint(&painter, QRect(place, QSize(family.size, family.size)), Qt::AlignCenter, mode);
            place.rx() += family.size + kGap;
        }
        at.ry() += family.size + kGap;
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2) {
        qCritical("usage: picture_sheet SHEET.png [RATIO]");
        return 2;
    }
    const int ratio = arguments.size() > 2 ? qMax(1, arguments[2].toInt()) : 1;
    constexpr int kColumns = static_cast<int>(kModes.size());
    constexpr int kRows = static_cast<int>(kGrounds.size());
    QImage sheet(QSize(kColumns * kWidth, kRows * kRowsOfOne) * ratio, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(ratio);
    QPainter painter(&sheet);
    QRect place(0, 0, kWidth, kRowsOfOne);
    for (const QColor& ground : kGrounds) {
        place.moveLeft(0);
        for (const QIcon::Mode mode : kModes) {
            const bool selected = mode == QIcon::Selected;
            painter.fillRect(place,
                             selected ? QGuiApplication::palette().color(QPalette::Highlight) : ground);
            DrawFamilies(painter, place.topLeft() + QPoint(kGap, kGap), mode);
            place.translate(kWidth, 0);
        }
        place.translate(0, kRowsOfOne);
    }
    painter.end();
    return sheet.save(arguments[1]) ? 0 : 1;
}

// Draws every picture, enabled and disabled, on light and dark grounds, onto one sheet to be looked at.
//
//   picture_sheet SHEET.png [RATIO]     RATIO: device pixels to a pixel, 1 when it is not given

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "Pictures.h"

namespace {

struct Family {
    int size;  // [px] the grid that it is drawn on
    QStringList names;
};

const Family kFamilies[] = {
    {24, {"new", "open", "save", "print", "export", "cut", "copy", "paste", "help"}},
    {48, {"project", "powersystem", "loadprofile", "recommend"}},
    {16,
     {"step", "airconditioning", "charger", "lighting", "medical", "misc", "motor", "office", "ups", "vfd"}},
    {20,
     {"step", "airconditioning", "charger", "lighting", "medical", "misc", "motor", "office", "ups", "vfd"}},
};
const QColor kGrounds[] = {QColor("#ffffff"), QColor("#efefef"), QColor("#2b2b2b")};
constexpr QIcon::Mode kModes[] = {QIcon::Normal, QIcon::Disabled};
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
    constexpr int kHeight = kRowsOfOne * static_cast<int>(std::size(kGrounds));
    QImage sheet(QSize(kWidth * 2, kHeight) * ratio, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(ratio);
    QPainter painter(&sheet);
    for (int row = 0; row < static_cast<int>(std::size(kGrounds)); ++row) {
        painter.fillRect(0, row * kRowsOfOne, 2 * kWidth, kRowsOfOne, kGrounds[row]);
        for (int column = 0; column < static_cast<int>(std::size(kModes)); ++column) {
            DrawFamilies(painter, QPoint(column * kWidth + kGap, row * kRowsOfOne + kGap), kModes[column]);
        }
    }
    painter.end();
    return sheet.save(arguments[1]) ? 0 : 1;
}

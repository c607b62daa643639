#include "Pictures.h"

#include <QFile>
#include <QString>

#include "PictureEngine.h"

// The linker drops the resource of a static library unless somebody asks for it; the macro that asks works
// outside of every namespace only.
static void KeepPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace genvara {

QIcon Picture(std::string_view name) {
    KeepPictures();
    const QString file = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))
                             .prepend(":/pictures/")
                             .append(".svg");
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QIcon(new PictureEngine(file, source.readAll()));
}

}  // namespace genvara

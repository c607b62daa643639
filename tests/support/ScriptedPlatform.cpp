#include "ScriptedPlatform.h"

#include <QPrinter>

namespace genvara {

void ScriptedPlatform::Print(QWidget* /*owner*/, const std::string& title, PrintSetup& setup,
                             const std::function<void(QPrinter&)>& paint) {
    asked.push_back({.what = "print", .text = title});
    offered = setup;
    setup = printSetup.value_or(setup);
    if (printFails) {
        throw RaisedError(482, "Printer", "Printer error");
    }
    if (!printFile.empty()) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(printFile.string()));
        paint(printer);
    }
}

}  // namespace genvara

// Turns a report of rich text into a PDF file: a filter that the console program starts. It needs no display.

#include <fmt/format.h>

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QHashSeed>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "DateTime.h"
#include "ProgramVersion.h"
#include "ReportPdf.h"
#include "RichTextReader.h"

namespace genvara {
namespace {

enum class Status : int { kDone = 0, kBadArguments = 2, kUnreadable = 3, kFailed = 4 };

/// What a desktop may set, and what has no part in a file.
constexpr std::array<const char*, 5> kDesktopSettings{"QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR",
                                                      "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI",
                                                      "QT_USE_PHYSICAL_DPI"};

void LeaveTheDesktop() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* setting : kDesktopSettings) {
        qunsetenv(setting);
    }
    // What the toolkit says of a desktop that is not there concerns nobody.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& /*place*/, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            fmt::print(stderr, "genvara-pdf: {}\n", text.toStdString());
        }
    });
}

Status Fail(Status status, std::string_view text) {
    fmt::print(stderr, "genvara-pdf: {}\n", text);
    return status;
}

struct Arguments {
    QString name;
    std::optional<DateTime> created;
    bool areValid = true;
};

Arguments ArgumentsOf(const QGuiApplication& application) {
    QCommandLineParser line;
    line.setApplicationDescription(
        "Reads a report of rich text from standard input and writes it to standard output as a PDF file.");
    line.addHelpOption();
    line.addVersionOption();
    line.addOption({"name", "Project's name, at the foot of each page and in the title.", "name"});
    line.addOption(
        {"created", "Local time that the file states as its own, \"yyyy-mm-dd hh:mm:ss\".", "time"});
    line.process(application);
    Arguments arguments;
    arguments.name = line.value("name");
    if (line.isSet("created")) {
        arguments.created = ParseDateTime(line.value("created").toStdString());
    }
    arguments.areValid =
        line.positionalArguments().isEmpty() && line.isSet("created") == arguments.created.has_value();
    return arguments;
}

Status Convert(const Arguments& arguments) {
    QFile input;
    QFile output;
    if (!input.open(stdin, QIODevice::ReadOnly) || !output.open(stdout, QIODevice::WriteOnly)) {
        return Fail(Status::kUnreadable, "there is no standard input or output");
    }
    const std::string text = input.readAll().toStdString();
    if (!text.starts_with("{\\rtf")) {
        return Fail(Status::kUnreadable, "standard input is no rich text");
    }
    const ReportLayout layout(ReadRichText(text));
    const QByteArray pdf = ReportPdf(layout, arguments.name, arguments.created.value_or(LocalTime()));
    if (pdf.isEmpty()) {
        return Fail(Status::kFailed, "the pages cannot be made");
    }
    if (output.write(pdf) != pdf.size() || !output.flush()) {
        return Fail(Status::kUnreadable, "standard output cannot be written");
    }
    return Status::kDone;
}

int Main(int argc, char** argv) {
    // Fonts go into the file in the order of a hash table.
    QHashSeed::setDeterministicGlobalSeed();
    LeaveTheDesktop();
    QGuiApplication::setApplicationName("genvara-pdf");
    QGuiApplication::setApplicationVersion(QString::fromUtf8(kProgramVersionText));
    const QGuiApplication application(argc, argv);
    const Arguments arguments = ArgumentsOf(application);
    if (!arguments.areValid) {
        return static_cast<int>(Fail(Status::kBadArguments, "the arguments are off; see --help"));
    }
    if (arguments.created) {
        // A file of a fixed time states no zone of the machine that made it.
        qputenv("TZ", "UTC");
    }
    return static_cast<int>(Convert(arguments));
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    return genvara::Main(argc, argv);
}

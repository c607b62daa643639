#include "ImportCommand.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <span>
#include <system_error>

#include "CodePage.h"
#include "FileIdentity.h"
#include "ImportTable.h"
#include "JsonText.h"
#include "NumberText.h"
#include "Output.h"
#include "ProjectFormat.h"
#include "ProjectSource.h"
#include "StudyCommand.h"
#include "StudyOutput.h"
#include "TableText.h"
#include "TextTable.h"

namespace genvara {
namespace {

constexpr std::size_t kLongestName = 40;

[[noreturn]] void Fail(const std::string& description) {
    throw ProjectFailure{Status::Unreadable, RaisedError(0, "", description)};
}

/// Standard input.
class InputSource final : public ByteSource {
  public:
    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        ssize_t count = 0;
        do {
            count = read(STDIN_FILENO, buffer.data(), buffer.size());
        } while (count < 0 && errno == EINTR);
        if (count < 0) {
            Fail(fmt::format("Standard input cannot be read: {}.", std::generic_category().message(errno)));
        }
        return static_cast<std::size_t>(count);
    }
};

std::string ReadTableFile(const std::string& table) {
    if (table == "-") {
        InputSource input;
        return TableBytes(input);
    }
    try {
        FileSource file(table, "ReadLoadTable");
        return TableBytes(file);
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::Unreadable, failure};
    }
}

std::string NameOf(const std::string& table) {
    return table == "-" ? "standard input" : table;
}

void RequireOutput(const ProjectArguments& project, const ImportArguments& arguments) {
    if (arguments.output.empty()) {
        return;
    }
    RequireProjectName(arguments.output, project);
    const std::array<InputFile, 1> inputs{{{arguments.table, "the table"}}};
    const auto refusal = arguments.table == "-" ? std::nullopt : OverwriteRefusal(arguments.output, inputs);
    if (refusal) {
        RefuseArguments(*refusal);
    }
}

/// A `.prj` has the characters of its code page alone; a text that has others is refused rather than changed.
void RequireEncodable(const ImportedTable& table, const std::string& output) {
    if (FormatOfName(output) != ProjectFormat::Records) {
        return;
    }
    const auto require = [&](const std::string& text) {
        if (EncodeText(text).lostCharacters > 0) {
            Fail(fmt::format("{} cannot hold \"{}\": its code page lacks a character. Write a .json instead.",
                             output, OneLine(text, kLongestName)));
        }
    };
    for (const NewStep& step : table.newSteps) {
        require(step.description);
    }
    for (const ImportedRow& row : table.rows) {
        require(row.load->name());
        require(row.load->Description());
    }
}

void FaultMembers(JsonText& json, const ImportedTable& table) {
    json.Member("NewSteps", [&] {
        std::vector<std::string> steps;
        for (const NewStep& step : table.newSteps) {
            steps.push_back(step.description);
        }
        return steps;
    }());
    json.Member("Notes", table.notes).Key("Faults").BeginArray();
    for (const TableFault& fault : table.faults) {
        json.BeginObject()
            .Member("Row", fault.row)
            .Member("Column", fault.column)
            .Member("Heading", fault.heading)
            .Member("Description", fault.text)
            .EndObject();
    }
    json.EndArray();
}

std::string TableJson(const std::string& file, const ImportedTable& table) {
    JsonText json;
    json.BeginObject().Member("File", file).Key("Rows").BeginArray();
    for (const ImportedRow& row : table.rows) {
        json.BeginObject().Member("Row", row.number).Member("StepNumber", row.step);
        if (row.load) {
            json.Member("StepDescription", row.stepDescription)
                .Member("LoadType", row.load->LoadType())
                .Member("name", row.load->name())
                .Member("Quantity", row.load->Quantity())
                .Member("Phases", row.load->Phases())
                .Member("RunningRealPower", row.load->RunningRealPower())
                .Member("RunningAppPower", row.load->RunningAppPower())
                .Member("StartingRealPower", row.load->StartingRealPower())
                .Member("StartingAppPower", row.load->StartingAppPower());
        }
        json.EndObject();
    }
    json.EndArray();
    FaultMembers(json, table);
    return json.EndObject().Text() + "\n";
}

/// What each row becomes; powers of all its units.
std::string TableOfRows(const std::string& file, const ImportedTable& table) {
    using Align = TextTable::Align;
    TextTable shown({{"row", Align::Right},
                     {"step", Align::Right},
                     {"type", Align::Left},
                     {"name", Align::Left},
                     {"qty", Align::Right},
                     {"running kW", Align::Right},
                     {"kVA", Align::Right},
                     {"starting kW", Align::Right},
                     {"kVA", Align::Right}});
    const auto kilo = [](double power) { return RenderFixed(power, 2); };
    for (const ImportedRow& row : table.rows) {
        shown.AddRow({fmt::format("{}", row.number), fmt::format("{}", row.step), row.kind,
                      OneLine(row.load->name(), kLongestName), fmt::format("{}", row.load->Quantity()),
                      kilo(row.figures->runningKW), kilo(row.figures->runningKVA),
                      kilo(row.figures->startingKW), kilo(row.figures->startingKVA)});
    }
    return fmt::format("{}\n{}{}\n", file, shown.Text(), ImportSummary(table));
}

void TellFaults(const std::string& file, const ImportedTable& table, const std::string& output) {
    for (const TableFault& fault : table.faults) {
        Complain(fmt::format("{}: {}", file, FaultLine(fault)));
    }
    if (!output.empty()) {
        Complain(fmt::format("{} was not written.", output));
    }
}

Status Work(const ProjectArguments& project, const ImportArguments& arguments,
            const StudiedProject& studied) {
    RequireOutput(project, arguments);
    const std::string file = NameOf(arguments.table);
    StudyProject changed = studied.Project();
    const ImportedTable table = ReadLoadTable(ReadTableFile(arguments.table), changed.loadProfile,
                                              changed.powerSystem, studied.Tables().rules);
    for (const std::string& note : table.notes) {
        Complain(fmt::format("{}: warning: {}", file, note));
    }
    if (table.CanBeAdded() && !arguments.output.empty()) {
        RequireEncodable(table, arguments.output);
        AddTable(table, changed.loadProfile);
        WriteStudied(arguments.output, changed, studied.Tables());
    }
    if (project.json) {
        Print(TableJson(file, table));
    } else if (table.CanBeAdded()) {
        Print(TableOfRows(file, table));
    }
    if (!table.CanBeAdded()) {
        TellFaults(file, table, arguments.output);
        return Status::Unreadable;
    }
    return Status::Done;
}

}  // namespace

int RunImport(const ProjectArguments& project, const ImportArguments& arguments) {
    return RunStudy(project, [&](const StudiedProject& studied, const StopFlag& /*stop*/) {
        return Work(project, arguments, studied);
    });
}

}  // namespace genvara

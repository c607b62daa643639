#include <algorithm>
#include <csignal>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <functional>
#include <new>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include "AdviseCommand.h"
#include "ArgumentText.h"
#include "CommandLine.h"
#include "CommonOptions.h"
#include "ExplainCommand.h"
#include "ImportCommand.h"
#include "OrderCommand.h"
#include "Output.h"
#include "ProgramVersion.h"
#include "RaisedError.h"
#include "ReportCommand.h"
#include "SizedProject.h"
#include "SweepCommand.h"

namespace genvara {

std::filesystem::path DatabaseBesideProgram() {
    std::error_code failure;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return (failure ? std::filesystem::path(".") : program.parent_path()) / "Genvara.db";
}

namespace {

constexpr int kBadArguments = static_cast<int>(Status::BadArguments);
/// That of a program that its reader's going away has ended: 128 and the signal's number.
constexpr int kReaderGone = 128 + SIGPIPE;
constexpr std::int32_t kMostJobs = 256;
constexpr std::int32_t kMostSteps = 1000000;

/// The whole command line. What is to be done is remembered and done once all of it has been understood.
class CommandLine {
  public:
    CommandLine() {
        m_app.set_version_flag("--version", fmt::format("genvara-cli {}", kProgramVersionText));
        m_app.require_subcommand(1);
        m_app.footer(
            "Exit status: 0 done; 1 check found something; 2 the arguments are off; 3 a file or the "
            "database\n"
            "cannot be read or written; 4 a run failed, or standard output takes no more; 130 a study was\n"
            "stopped; 141 the reader of standard output went away. With several projects the highest "
            "counts.");
        m_arguments.database = DatabaseBesideProgram();
        AddSize();
        AddExplain();
        AddSweep();
        AddAdvise();
        AddOrder();
        AddImport();
        AddCheck();
        AddReport();
        AddExportSpec();
        AddConvert();
        AddDescribe();
        AddCatalog();
    }

    int Run(int count, char** arguments) {
        try {
            m_app.parse(count, arguments);
        } catch (const CLI::Success& request) {
            std::ostringstream text;
            const int status = m_app.exit(request, text, text);
            Print(text.str());
            return status;
        } catch (const CLI::ParseError& refusal) {
            const std::string unknown =
                UnknownCommand(m_app, std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
            Complain(fmt::format("genvara-cli: {}", unknown.empty() ? refusal.what() : unknown));
            Complain(m_app.help());
            return kBadArguments;
        }
        return m_todo();
    }

  private:
    static constexpr std::string_view kTimeForm = "\"yyyy-mm-dd hh:mm:ss\", or with a T for the blank";

    void AddSize() {
        CLI::App* size = m_app.add_subcommand("size", "Size projects: recommended and undersized sets");
        AddProjects(*size, m_arguments);
        AddDatabase(*size, m_arguments);
        AddLimits(*size, m_arguments);
        AddJson(*size);
        AddJobs(*size, "Projects to size at the same time [1]");
        size->callback([this] { m_todo = [this] { return RunSize(m_arguments); }; });
    }

    void AddExplain() {
        CLI::App* explain =
            m_app.add_subcommand("explain", "Show why each set is recommended or not, test by test");
        AddProjects(*explain, m_arguments);
        AddDatabase(*explain, m_arguments);
        AddLimits(*explain, m_arguments);
        AddJson(*explain);
        CLI::Option* jobs =
            AddJobs(*explain, "Projects to explain at the same time [as many as there are cores]");
        explain
            ->add_option("--model", m_explain.choice.models,
                         "Explain the candidates of a model in place of the two lists; may be repeated")
            ->type_name("MODEL")
            ->allow_extra_args(false);
        explain->add_flag("--all", m_explain.choice.all, "Explain every candidate");
        explain->add_flag("--steps", m_explain.steps,
                          "Show every step in the table, and not the worst alone");
        explain->callback([this, jobs] {
            UseAllCores(*jobs);
            m_todo = [this] { return RunExplain(m_arguments, m_explain); };
        });
    }

    void AddSweep() {
        CLI::App* sweep =
            m_app.add_subcommand("sweep", "Size a project at every point of a grid of its values");
        AddStudied(*sweep);
        sweep
            ->add_option("--vary", m_sweep.vary,
                         "Values of one member; may be repeated, the last one runs fastest")
            ->required()
            ->type_name("PATH=FROM:TO:BY|PATH=VALUE,VALUE...")
            ->allow_extra_args(false);
        AddJson(*sweep, "One JSON object on one line for each point");
        sweep->add_flag("--csv", m_sweep.csv, "A table of comma-separated values")
            ->excludes(sweep->get_option("--json"));
        CLI::Option* jobs = AddJobs(*sweep, "Points to size at the same time [as many as there are cores]");
        sweep->add_flag("--breaks", m_sweep.breaks,
                        "Where between FROM and TO the answer changes, in place of every point");
        sweep->add_flag("--yes", m_sweep.yes, "Sweep more than a million points");
        sweep->callback([this, jobs] {
            UseAllCores(*jobs);
            m_todo = [this] { return RunSweep(m_arguments, m_sweep); };
        });
    }

    void AddAdvise() {
        CLI::App* advise =
            m_app.add_subcommand("advise", "List the changes of a project that would let a smaller set do");
        AddStudied(*advise);
        advise->add_flag("--pairs", m_advise.pairs, "Try each two changes together, too");
        advise->add_option("--kinds", m_advise.kinds, "Try changes of these kinds alone")
            ->check(NotEmpty())
            ->type_name("KIND,...");
        AddJson(*advise, "One JSON object on one line");
        CLI::Option* jobs = AddJobs(*advise, "Changes to try at the same time [as many as there are cores]");
        CLI::Option* apply =
            advise
                ->add_option("--apply", m_advise.apply, "Write the project with this advice, counted from 0")
                ->transform(Decimal())
                ->check(NotNegative())
                ->type_name("N");
        CLI::Option* output = advise->add_option("-o", m_advise.output, "File to write, .prj or .json")
                                  ->check(NotEmpty())
                                  ->type_name("NEW")
                                  ->needs(apply);
        apply->needs(output);
        advise->callback([this, jobs] {
            UseAllCores(*jobs);
            m_todo = [this] { return RunAdvise(m_arguments, m_advise); };
        });
    }

    void AddOrder() {
        CLI::App* order = m_app.add_subcommand(
            "order", "Find which loads should start together, and when, for the smallest set");
        AddStudied(*order);
        order->add_option("--max-steps", m_order.maxSteps, "Most steps [as many as the project has]")
            ->transform(Decimal())
            ->check(CLI::Range(1, kMostSteps))
            ->type_name("N");
        order
            ->add_option("--before", m_order.before,
                         "A load that starts in an earlier step than another; may be repeated")
            ->type_name("Step[1].Load[2]<Step[3].Load[1]")
            ->allow_extra_args(false);
        order->add_option("--together", m_order.together, "Two loads that start together; may be repeated")
            ->type_name("Step[1].Load[2]+Step[1].Load[3]")
            ->allow_extra_args(false);
        order->add_option("--seconds", m_order.seconds, "How long to search with more than 8 loads [10]")
            ->check(NotNegative())
            ->type_name("S");
        AddJson(*order, "One JSON object on one line");
        AddJobs(*order, "Accepted as for the other studies; one search keeps to one core");
        order->add_option("-o", m_order.output, "Write the project with the best order, .prj or .json")
            ->check(NotEmpty())
            ->type_name("NEW");
        order->callback([this] { m_todo = [this] { return RunOrder(m_arguments, m_order); }; });
    }

    void AddImport() {
        CLI::App* table =
            m_app.add_subcommand("import", "Add the loads of a spreadsheet's table to a project");
        table
            ->add_option("TABLE.csv", m_import.table,
                         "Table with a heading row, its cells parted by commas, semicolons or tabs; - for "
                         "standard input")
            ->required()
            ->type_name("");
        table->add_option("--into", m_arguments.files, "Project file, .prj or .json")
            ->required()
            ->expected(1)
            ->type_name("PROJECT");
        table
            ->add_option("-o", m_import.output,
                         "Write the project with the loads, .prj or .json [nothing is written]")
            ->check(NotEmpty())
            ->type_name("NEW");
        AddJson(*table, "One JSON object on one line");
        AddDatabase(*table, m_arguments);
        table->callback([this] { m_todo = [this] { return RunImport(m_arguments, m_import); }; });
    }

    void AddCheck() {
        CLI::App* check = m_app.add_subcommand("check", "List what of project files cannot be used");
        AddProjects(*check, m_arguments);
        AddDatabase(*check, m_arguments);
        check->callback([this] { m_todo = [this] { return RunCheck(m_arguments); }; });
    }

    void AddReport() {
        CLI::App* report = m_app.add_subcommand("report", "Write a report on a set as rich text or PDF");
        AddOneProject(*report, "FILE.rtf|FILE.pdf");
        CLI::Option* chosen = AddSets(*report);
        report->add_flag("--no-match", m_report.noMatch, "The search failure report, whatever was found")
            ->excludes(chosen)
            ->excludes(report->get_option("--undersized"));
        report
            ->add_option_function<std::string>(
                "--type", [this](const std::string& type) { m_report.type = type == "summary" ? 1 : 0; },
                "sizing or summary [sizing]")
            ->check(CLI::IsMember({"sizing", "summary"}))
            ->type_name("TYPE");
        report->add_flag("--metric", m_report.metric,
                         "Metres and degrees Celsius in place of feet and Fahrenheit");
        report
            ->add_option_function<std::string>(
                "--now",
                [this](const std::string& text) {
                    m_report.now = ParseDateTime(WithBlank(text));
                    if (!m_report.now) {
                        throw CLI::ValidationError(
                            "--now", fmt::format("\"{}\" is no time; expected {}", text, kTimeForm));
                    }
                },
                fmt::format("Time that the report states: {} [the present]", kTimeForm))
            ->type_name("TIME");
        report->callback([this] { m_todo = [this] { return RunReport(m_arguments, m_report); }; });
    }

    void AddExportSpec() {
        CLI::App* spec =
            m_app.add_subcommand("export-spec", "Write the essentials of a set to a profile file");
        AddOneProject(*spec, "FILE.gvx");
        AddSets(*spec);
        spec->callback([this] { m_todo = [this] { return RunExportSpec(m_arguments, m_report); }; });
    }

    void AddConvert() {
        CLI::App* convert =
            m_app.add_subcommand("convert", "Turn a project into its other format, .prj or .json");
        convert->add_option("PROJECT", m_arguments.files, "Project file")
            ->required()
            ->expected(1)
            ->type_name("");
        convert->add_option("-o", m_report.output, "File to write, ending with .prj or .json")
            ->required()
            ->check(NotEmpty())
            ->type_name("FILE");
        AddDatabase(*convert, m_arguments);
        convert->callback([this] { m_todo = [this] { return RunConvert(m_arguments, m_report.output); }; });
    }

    void AddDescribe() {
        CLI::App* describe = m_app.add_subcommand(
            "describe", "List every member of a project: name, unit, range or codes, meaning");
        describe
            ->add_option("KIND", m_describe.kind,
                         "Project, PowerSystem, Designer, Step or a kind of load [all]")
            ->type_name("");
        CLI::Option* json = describe->add_flag("--json", m_describe.json, "One JSON object a line");
        describe->add_flag("--schema", m_describe.schema, "The JSON schema of JSON projects")->excludes(json);
        describe->callback([this] { m_todo = [this] { return RunDescribe(m_describe); }; });
    }

    void AddOneProject(CLI::App& command, const char* output) {
        command.add_option("PROJECT.prj", m_arguments.files, "Project file, .prj or .json")
            ->required()
            ->expected(1)
            ->type_name("");
        command.add_option("-o", m_report.output, "File to write, or - for standard output")
            ->required()
            ->type_name(output);
        AddDatabase(command, m_arguments);
        AddLimits(command, m_arguments);
    }

    CLI::Option* AddSets(CLI::App& command) {
        CLI::Option* chosen =
            command.add_option("--set", m_report.set, "Recommended set, counted from 0 [the first]")
                ->transform(Decimal())
                ->type_name("N");
        command.add_option("--undersized", m_report.undersized, "Undersized set, counted from 0")
            ->transform(Decimal())
            ->type_name("N")
            ->excludes(chosen);
        return chosen;
    }

    void AddCatalog() {
        CLI::App* catalog = m_app.add_subcommand("catalog", "Build and check the genset database");
        catalog->require_subcommand(1);
        CLI::App* build = catalog->add_subcommand("build", "Build a database from a folder of CSV tables");
        build->add_option("DIR", m_folder, "Folder with one CSV file a table")->required()->type_name("");
        build->add_option("-o", m_file, "Database to write")->required()->type_name("FILE.db");
        build->callback([this] { m_todo = [this] { return RunCatalogBuild(m_folder, m_file); }; });
        CLI::App* check =
            catalog->add_subcommand("check", "List everything in a database that would end or falsify a run");
        check->add_option("FILE.db", m_file, "Database to look through")->required()->type_name("");
        check->callback([this] { m_todo = [this] { return RunCatalogCheck(m_file); }; });
    }

    /// The one project of a study, with the options of a run.
    void AddStudied(CLI::App& command) {
        command.add_option("PROJECT", m_arguments.files, "Project file, .prj or .json")
            ->required()
            ->expected(1)
            ->type_name("");
        AddDatabase(command, m_arguments);
        AddLimits(command, m_arguments);
    }

    void AddJson(CLI::App& command,
                 const char* description = "One JSON object on one line for each project") {
        command.add_flag("--json", m_arguments.json, description);
    }

    void UseAllCores(const CLI::Option& jobs) {
        if (jobs.empty()) {
            m_arguments.jobs =
                std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, kMostJobs);
        }
    }

    CLI::Option* AddJobs(CLI::App& command, const char* description) {
        return command.add_option("--jobs", m_arguments.jobs, description)
            ->check(CLI::Range(1, kMostJobs))
            ->transform(Decimal())
            ->type_name("N");
    }

    CLI::App m_app{"Sizes electric generator sets for a site and its load profile.", "genvara-cli"};
    ProjectArguments m_arguments;
    ReportArguments m_report;
    DescribeArguments m_describe;
    ImportArguments m_import;
    ExplainArguments m_explain;
    SweepArguments m_sweep;
    AdviseArguments m_advise;
    OrderArguments m_order;
    std::string m_folder;
    std::string m_file;
    std::function<int()> m_todo;
};

}  // namespace
}  // namespace genvara

int main(int count, char** arguments) {
    // A reader that goes away shows as a failed write, so that what is open can be closed.
    std::signal(SIGPIPE, SIG_IGN);
    // So does a file that grows beyond the user's limit of file sizes.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return genvara::CommandLine().Run(count, arguments);
    } catch (const genvara::LostOutput& lost) {
        if (lost.ReaderIsGone()) {
            return genvara::kReaderGone;
        }
        genvara::Complain(fmt::format("genvara-cli: error: {}", lost.what()));
    } catch (const genvara::RaisedError& failure) {
        genvara::Complain(genvara::FailureLine("genvara-cli", failure));
    } catch (const std::bad_alloc&) {
        // Told without asking for memory.
        genvara::Complain("genvara-cli: error: There is not enough memory.");
    } catch (const std::exception& failure) {
        genvara::Complain(fmt::format("genvara-cli: error: {}", failure.what()));
    }
    return static_cast<int>(genvara::Status::RunFailed);
}

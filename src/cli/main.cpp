#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <csignal>
#include <functional>
#include <string_view>

#include "cli/run.h"

namespace cli {
namespace {

constexpr std::string_view kSubcommands =
    "check, convert, describe, script, state, edit, frame or diff";

// Where an option takes several values the argument parser would take a name in brackets, "[a,b]",
// for a list of them. A mark behind it keeps it whole.
constexpr char kWholeMark = '\1';

std::vector<std::string> Marked(std::vector<std::string> arguments)
{
    for (std::string& argument : arguments)
        if (argument.starts_with('[') && argument.ends_with(']'))
            argument += kWholeMark;
    return arguments;
}

std::vector<std::string> Unmarked(std::vector<std::string> arguments)
{
    for (std::string& argument : arguments)
        if (argument.ends_with(kWholeMark))
            argument.pop_back();
    return arguments;
}

/// The program's arguments as they are declared, and what is to be run when they are good.
class Arguments {
 public:
    Arguments();

    int Run(int argc, char** argv);

 private:
    CLI::App* Add(const std::string& name, const std::string& about, const std::string& example);
    void AddCheck();
    void AddFileCommands();
    void AddScript();
    void AddFrame();
    void AddStepCommands();
    void AddSteps(CLI::App& command);
    int RunSteps(const CLI::App& command, bool edit);
    int RunFrame(int argc, char** argv);
    [[nodiscard]] bool Knows(const std::string& first) const;

    CLI::App app_{"Shows of the musical fountain at the command line, without a window.", "choreo"};
    std::function<int(int, char**)> run_;

    CheckOptions check_;
    std::vector<std::string> words_;
    std::string file_;
    std::string out_;
    std::string at_;
    std::string size_ = "1024x372";
};

Arguments::Arguments()
{
    app_.require_subcommand(1);
    app_.set_version_flag("--version", "choreo " CHOREO_VERSION);
    app_.footer(
        "TIME is mm:ss.t (01:05.3) or a whole number of milliseconds (65300).\n"
        "Exit codes: 0 success, 1 something was found, 2 bad usage or a file that cannot "
        "be read or written.\n\nExample:\n  choreo check show.ctl");
    AddCheck();
    AddFileCommands();
    AddScript();
    AddStepCommands();
    AddFrame();
}

CLI::App* Arguments::Add(const std::string& name, const std::string& about,
                         const std::string& example)
{
    CLI::App* command = app_.add_subcommand(name, about);
    command->footer("Example:\n  choreo " + name + ' ' + example);
    return command;
}

void Arguments::AddCheck()
{
    CLI::App* command = Add("check", "List what is wrong with control files",
                            "--strict --music show.ctl evening.ctl");
    command->add_option("FILE", check_.files, "Control files")->required();
    command->add_flag("--json", check_.json, "Print an array with one object for each file");
    command->add_flag("--strict", check_.strict, "Exit with 1 for warnings too");
    command->add_flag("--music", check_.music,
                      "Also look for times behind the end of the music beside the file");
    command->callback([this] {
        check_.files = Unmarked(check_.files);
        run_ = [this](int, char**) { return RunCheck(check_); };
    });
}

void Arguments::AddFileCommands()
{
    CLI::App* convert =
        Add("convert", "Read a control file and save it as this version does", "old.ctl new.ctl");
    convert->add_option("IN", file_, "Control file to read")->required();
    convert->add_option("OUT", out_, "Control file to save, with its backups")->required();
    convert->callback([this] { run_ = [this](int, char**) { return RunConvert(file_, out_); }; });

    CLI::App* describe =
        Add("describe", "Say commands in English, one sentence a line", "003-020 099-000");
    describe->add_option("AAA-DDD", words_, "Commands; without any, standard input is read");
    describe->callback(
        [this] { run_ = [this](int, char**) { return RunDescribe(Unmarked(words_)); }; });

    CLI::App* diff =
        Add("diff", "Say what changed between two choreographies", "show.001 show.ctl");
    diff->add_option("OLD", file_, "Control file before")->required();
    diff->add_option("NEW", out_, "Control file after")->required();
    diff->callback([this] { run_ = [this](int, char**) { return RunDiff(file_, out_); }; });
}

void Arguments::AddScript()
{
    CLI::App* command = Add("script", "Print the script of a show", "show.ctl --pdf show.pdf");
    command->add_option("FILE", file_, "Control file")->required();
    command->add_option("--pdf", out_, "Write pages to this PDF file instead of text");
    command->callback([this] {
        run_ = [this](int argc, char** argv) { return RunScript(file_, out_, argc, argv); };
    });
}

void Arguments::AddFrame()
{
    CLI::App* command = Add("frame", "Paint the fountain as it is at a time",
                            "show.ctl --at 01:05.3 -o frame.png --size 2048x744");
    command->add_option("FILE", file_, "Control file")->required();
    command->add_option("--at", at_, "TIME of the picture")->required();
    command->add_option("-o", out_, "PNG file to write")->required();
    command->add_option("--size", size_, "WIDTHxHEIGHT in pixels, 1024x372 by default");
    command->callback(
        [this] { run_ = [this](int argc, char** argv) { return RunFrame(argc, argv); }; });
}

int Arguments::RunFrame(int argc, char** argv)
{
    const auto time = ParseTime(at_);
    if (!time.value)
        return Fail("--at " + time.error);
    const auto size = ParseSize(size_);
    if (!size.value)
        return Fail("--size " + size.error);
    return cli::RunFrame(file_, *time.value, out_, *size.value, argc, argv);
}

void Arguments::AddStepCommands()
{
    CLI::App* state = Add("state", "Perform steps and print what the editor shows after each",
                          "show.ctl --at 01:05.3 --play 01:10.0");
    CLI::App* edit = Add("edit", "Perform steps, then save",
                         "show.ctl --at 01:05.3 --set updnRings_4=3 -o new.ctl");
    for (CLI::App* command : {state, edit}) {
        command->add_option("FILE", file_, "Control file")->required();
        AddSteps(*command);
    }
    edit->add_option("-o", out_, "Control file to save; FILE itself by default");
    state->callback(
        [this, state] { run_ = [this, state](int, char**) { return RunSteps(*state, false); }; });
    edit->callback(
        [this, edit] { run_ = [this, edit](int, char**) { return RunSteps(*edit, true); }; });
}

void Arguments::AddSteps(CLI::App& command)
{
    struct StepOption {
        const char* name;
        const char* about;
    };
    static constexpr std::array<StepOption, 6> kSteps = {{
        {"--at", "Move to this TIME"},
        {"--play", "Play without music up to this TIME"},
        {"--set", "CONTROL=N: give a spinner a value"},
        {"--spin", "CONTROL=+N or CONTROL=-N: press a spinner's arrow N times"},
        {"--click", "CONTROL: click it; CONTROL:right with the right button"},
        {"--key", "Press PageUp, PageDown, Home, End or F9"},
    }};
    for (const auto& [name, about] : kSteps)
        command.add_option(name, about)
            ->type_name("STEP")
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->group("Steps, in the order given");
}

// An option that is given several times keeps its values in a row of its own; only the order of
// parsing tells how the rows interleave.
int Arguments::RunSteps(const CLI::App& command, bool edit)
{
    std::vector<Step> steps;
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : command.parse_order()) {
        const std::string name = option->get_name();
        if (option->get_group() != "Steps, in the order given")
            continue;
        const auto step = ParseStep(name, option->results().at(taken[option]++));
        if (!step.value)
            return Fail(step.error);
        steps.push_back(*step.value);
    }
    if (steps.empty())
        return Fail("expected at least one step: --at, --play, --set, --spin, --click or --key");
    return edit ? RunEdit(file_, steps, out_) : RunState(file_, steps);
}

bool Arguments::Knows(const std::string& first) const
{
    constexpr std::array<std::string_view, 3> kFlags{"-h", "--help", "--version"};
    return std::ranges::find(kFlags, first) != kFlags.end() ||
           !app_.get_subcommands(
                    [&first](const CLI::App* command) { return command->get_name() == first; })
                .empty();
}

int Arguments::Run(int argc, char** argv)
{
    const std::string first = argc > 1 ? argv[1] : "";
    if (!Knows(first))
        return Fail((first.empty() ? first : '"' + first + "\": ") +
                    "expected a subcommand: " + std::string(kSubcommands));
    std::vector<std::string> arguments(argv + 1, argv + argc);
    if (first == "check" || first == "describe")
        arguments = Marked(std::move(arguments));
    std::ranges::reverse(arguments);  // as the parser takes them
    try {
        app_.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        Print(app_.help());
        return Finished(kSuccess);
    } catch (const CLI::CallForVersion& version) {
        Print(std::string(version.what()) + '\n');
        return Finished(kSuccess);
    } catch (const CLI::ParseError& error) {
        return Fail(error.what());
    }
    return run_ ? run_(argc, argv) : kFailed;
}

}  // namespace
}  // namespace cli

int main(int argc, char** argv)
{
    // A file that grows beyond the limit is a write that fails, and is told as one.
    std::signal(SIGXFSZ, SIG_IGN);
    return cli::Arguments().Run(argc, argv);
}

#include "PdfHelper.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "CommandLine.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr const char* kHelper = "genvara-pdf";

[[noreturn]] void Fail(const std::string& reason) {
    throw RaisedError(0, "", fmt::format("No PDF file can be made: {}.", reason));
}

/// One end of a pipe, closed with its owner.
class PipeEnd {
  public:
    explicit PipeEnd(int descriptor) noexcept : m_descriptor(descriptor) {}
    ~PipeEnd() { Close(); }
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;
    PipeEnd(PipeEnd&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    PipeEnd& operator=(PipeEnd&&) = delete;

    [[nodiscard]] int Descriptor() const noexcept { return m_descriptor; }
    void Close() noexcept {
        if (m_descriptor >= 0) {
            close(std::exchange(m_descriptor, -1));
        }
    }

  private:
    int m_descriptor;
};

struct Pipe {
    PipeEnd from;
    PipeEnd to;
};

Pipe MakePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        Fail(std::generic_category().message(errno));
    }
    return {.from = PipeEnd(ends[0]), .to = PipeEnd(ends[1])};
}

/// What a started program gets as standard input and output.
class Redirection {
  public:
    Redirection(int input, int output) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
    }
    ~Redirection() { posix_spawn_file_actions_destroy(&m_actions); }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    Redirection(Redirection&&) = delete;
    Redirection& operator=(Redirection&&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* Actions() const noexcept { return &m_actions; }

  private:
    posix_spawn_file_actions_t m_actions{};
};

/// @throws RaisedError if the program is not there or cannot be started.
pid_t Start(const std::filesystem::path& program, std::vector<std::string> words,
            const Redirection& redirection) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, program.c_str(), redirection.Actions(), nullptr, arguments.data(), environ);
    if (failure == ENOENT) {
        Fail(fmt::format("{} is missing, which makes it", program.string()));
    }
    if (failure != 0) {
        Fail(fmt::format("{} cannot be started: {}", program.string(),
                         std::generic_category().message(failure)));
    }
    return process;
}

/// A program that ends early has its own reason, which its status tells.
void WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

std::string ReadAll(int descriptor) {
    std::string bytes;
    std::array<char, 65536> part{};
    ssize_t count = 0;
    do {
        count = read(descriptor, part.data(), part.size());
        bytes.append(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    } while (count > 0 || (count < 0 && errno == EINTR));
    return bytes;
}

bool Succeeds(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::string PdfOf(const std::string& richText, const std::string& name,
                  const std::optional<DateTime>& created) {
    std::vector<std::string> words{kHelper, "--name=" + name};
    if (created) {
        words.push_back("--created=" + RenderIso(*created).replace(10, 1, " "));
    }
    Pipe input = MakePipe();
    Pipe output = MakePipe();
    const pid_t process = Start(DatabaseBesideProgram().replace_filename(kHelper), std::move(words),
                                Redirection(input.from.Descriptor(), output.to.Descriptor()));
    input.from.Close();
    output.to.Close();
    // It writes nothing before it has read everything.
    WriteAll(input.to.Descriptor(), richText);
    input.to.Close();
    std::string pdf = ReadAll(output.from.Descriptor());
    if (!Succeeds(process) || pdf.empty()) {
        Fail(fmt::format("{} failed", kHelper));
    }
    return pdf;
}

}  // namespace genvara

#include "cli/ProgramRun.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr uid_t nobody = 65534;
constexpr int patience = 20'000;  // milliseconds

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return ends;
}

/// A file without a name that holds the text.
int fileOf(const std::string& text) {
    const int file = ::memfd_create("input", MFD_CLOEXEC);
    if (file < 0 || ::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
        ::lseek(file, 0, SEEK_SET) != 0)
        throw std::runtime_error("no standard input");
    return file;
}

}  // namespace

ProgramRun::ProgramRun(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                       const ProgramSetting& setting) {
    std::vector<std::string> words{program.filename().string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    for (const auto& [name, value] : setting.environment)
        variables.push_back(name + "=" + value);
    const auto argv = pointersTo(words);
    const auto envp = pointersTo(variables);
    const auto out = makePipe();
    const auto err = makePipe();
    const int in = fileOf(setting.input);
    // Opened here: whoever gives up rights may not be able to reach it.
    const int executable = ::open(program.c_str(), O_RDONLY | O_CLOEXEC);
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("no new process");
    if (process_ == 0) {
        if (::dup2(in, STDIN_FILENO) < 0 || ::dup2(out[1], STDOUT_FILENO) < 0 || ::dup2(err[1], STDERR_FILENO) < 0 ||
            ::chdir(setting.folder.c_str()) != 0)
            ::_exit(126);
        if (setting.inChild) setting.inChild();
        ::fexecve(executable, argv.data(), envp.data());
        ::_exit(127);
    }
    for (const int ours : {in, executable, out[1], err[1]})
        ::close(ours);
    out_.descriptor = out[0];
    err_.descriptor = err[0];
}

ProgramRun::~ProgramRun() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    for (const Stream* stream : {&out_, &err_})
        if (stream->descriptor >= 0) ::close(stream->descriptor);
}

void ProgramRun::sendSignal(int number) const {
    ::kill(process_, number);
}

bool ProgramRun::read(int milliseconds) {
    // A descriptor below 0 is passed over.
    std::array<pollfd, 2> ready{{{out_.descriptor, POLLIN, 0}, {err_.descriptor, POLLIN, 0}}};
    if ((out_.descriptor < 0 && err_.descriptor < 0) || ::poll(ready.data(), ready.size(), milliseconds) <= 0)
        return false;
    for (Stream* stream : {&out_, &err_}) {
        if (ready[stream == &out_ ? 0 : 1].revents == 0) continue;
        std::array<char, 4096> piece{};
        const ssize_t got = ::read(stream->descriptor, piece.data(), piece.size());
        if (got > 0) {
            stream->text.append(piece.data(), static_cast<std::size_t>(got));
        } else {
            ::close(stream->descriptor);
            stream->descriptor = -1;
        }
    }
    return true;
}

bool ProgramRun::hasWritten(std::string_view text) {
    const auto contains = [&](const Stream& stream) { return stream.text.find(text) != std::string::npos; };
    while (!contains(out_) && !contains(err_))
        if (!read(patience)) return false;
    return true;
}

ProgramResult ProgramRun::wait() {
    while (read(-1)) {
    }
    int waited = 0;
    ::waitpid(process_, &waited, 0);
    process_ = -1;
    return {
        .status = WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited), .out = out_.text, .err = err_.text};
}

void becomeNobody() {
    if (::geteuid() != 0) return;
    if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0) ::_exit(125);
}

void giveToNobody(const std::filesystem::path& path) {
    if (::geteuid() == 0 && ::chown(path.c_str(), nobody, nobody) != 0)
        throw std::runtime_error("cannot change the owner of " + path.string());
}

}  // namespace quorvane

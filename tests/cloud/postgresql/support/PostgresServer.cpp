#include "cloud/postgresql/support/PostgresServer.h"

#include "desktop/support/Waiting.h"

#include <arpa/inet.h>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <netinet/in.h>
#include <poll.h>
#include <pwd.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quorvane {
namespace {

using Path = std::filesystem::path;

int numberIn(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Of the newest version that is installed; empty without any.
Path programs() {
    Path newest;
    std::error_code none;
    for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", none)) {
        const Path bin = version.path() / "bin";
        if (std::filesystem::exists(bin / "initdb") &&
            (newest.empty() ||
             numberIn(version.path().filename().string()) > numberIn(newest.parent_path().filename().string())))
            newest = bin;
    }
    return newest;
}

/// The server refuses the superuser, so there it runs as a user who owns nothing else. Dying with the test's process
/// is left to the watcher, who takes the folder away, too.
std::vector<std::string> asServer(std::vector<std::string> command) {
    std::vector<std::string> words{"/usr/bin/setpriv", "--pdeathsig", "clear"};
    if (::geteuid() == 0) {
        const passwd* runner = ::getpwnam("nobody");
        if (runner == nullptr) throw std::runtime_error("there is no user that the server could run as");
        words.insert(words.end(), {fmt::format("--reuid={}", runner->pw_uid), fmt::format("--regid={}", runner->pw_gid),
                                   "--clear-groups"});
    }
    words.insert(words.end(), {"env", "-i", "HOME=/nonexistent", "PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "TZ=UTC"});
    words.insert(words.end(), std::make_move_iterator(command.begin()), std::make_move_iterator(command.end()));
    return words;
}

int freePort() {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    const bool isBound = ::bind(descriptor, any, size) == 0 && ::getsockname(descriptor, any, &size) == 0;
    ::close(descriptor);
    if (!isBound) throw std::runtime_error("no free port");
    return ntohs(address.sin_port);
}

bool hasEnded(pid_t pid) {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == pid;
}

std::string section(const std::string& name, const std::string& user, const std::vector<std::string>& more, int port,
                    const Path& folder) {
    std::string text = fmt::format("[{}]\n", name);
    for (const auto& line : more)  // of two values libpq takes the first
        text += line + "\n";
    return text + fmt::format("host=localhost\nhostaddr=127.0.0.1\nport={}\ndbname=quorvane\nuser={}\npassword={}-pw\n"
                              "sslmode=verify-full\nsslrootcert={}/ca.crt\nconnect_timeout=10\n",
                              port, user, user, folder.string());
}

}  // namespace

PostgresServer::PostgresServer(const PostgresSetUp& setUp) {
    constexpr const char* certificates[] = {"good", "expired", "ofAnotherAuthority"};
    make(certificates[static_cast<int>(setUp.certificate)]);
    for (int attempt = 1; !start(); ++attempt)  // somebody else may have taken the port
        if (attempt == 3) throw std::runtime_error("PostgreSQL does not start:\n" + contentOf(folder_ / "log"));
    furnish(setUp.schema);
    // Only now: the roles that set it up are not bound by them.
    if (!setUp.settings.empty()) {
        stop();
        std::ofstream conf(folder_ / "data/postgresql.conf", std::ios::app);
        for (const auto& line : setUp.settings)
            conf << line << std::endl;
        if (!start()) throw std::runtime_error("PostgreSQL does not start again");
    }
}

PostgresServer::~PostgresServer() {
    if (process_) stop();
}

PostgresServer::Watched::~Watched() {
    if (number >= 0) ::close(number);
}

bool PostgresServer::isInstalled() {
    return !programs().empty();
}

Path PostgresServer::serviceFile(const std::string& user, const std::vector<std::string>& more) const {
    Path file = folder_ / "pg_service.conf";
    for (int number = 2; std::filesystem::exists(file); ++number)
        file = folder_ / fmt::format("pg_service-{}.conf", number);
    writeFile(file, section("quorvane", user, more, port_, folder()) + "\n" +
                        section("quorvane-owner", "owner", more, port_, folder()));
    return file;
}

std::map<std::string, std::string> PostgresServer::access(const std::string& role, const std::string& database) const {
    return {{"host", folder().string()},
            {"port", std::to_string(port_)},
            {"dbname", database},
            {"user", role},
            {"password", role + "-pw"}};
}

ProgramResult PostgresServer::psql(const std::string& role, const std::string& statements,
                                   const std::string& database) const {
    const ProgramSetting setting{.folder = folder(),
                                 .input = statements,
                                 .environment = {{"HOME", "/nonexistent"},
                                                 {"LC_ALL", "C.UTF-8"},
                                                 {"PATH", "/usr/bin:/bin"},
                                                 {"PGCONNECT_TIMEOUT", "10"},
                                                 {"TZ", "UTC"}}};
    std::string where;
    for (const auto& [keyword, value] : access(role, database))
        where += fmt::format("{}={} ", keyword, value);
    return ProgramRun(programs() / "psql", {"-XqAt", "-v", "ON_ERROR_STOP=1", "-v", "VERBOSITY=verbose", "-d", where},
                      setting)
        .wait();
}

std::string PostgresServer::sql(const std::string& role, const std::string& statements,
                                const std::string& database) const {
    ProgramResult result = psql(role, statements, database);
    if (result.status != 0) throw std::runtime_error(role + ": " + result.err);
    if (result.out.ends_with('\n')) result.out.pop_back();
    return result.out;
}

void PostgresServer::make(const std::string& certificate) {
    if (!isInstalled()) throw std::runtime_error("PostgreSQL is not installed");
    giveToNobody(folder());
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    watched_.number = ends[1];
    ::fcntl(watched_.number, F_SETFD, FD_CLOEXEC);
    const int watcher =
        run({"setsid", "--fork", QUORVANE_MAKE_POSTGRES_SERVER, "watch", folder().string(), std::to_string(ends[0])});
    ::close(ends[0]);
    if (watcher != 0) throw std::runtime_error("nobody watches the server");
    // The script's text, as the user of the server may not be able to reach its file.
    auto words = asServer({"bash", "-c", contentOf(QUORVANE_MAKE_POSTGRES_SERVER), "make-postgres-server",
                           programs().string(), folder().string(), certificate});
    const std::string program = words.front();
    words.erase(words.begin());
    const auto made = ProgramRun(program, words, {.folder = folder()}).wait();
    if (made.status != 0) throw std::runtime_error("no data directory for PostgreSQL: " + made.err);
}

bool PostgresServer::start() {
    if (port_ == 0) port_ = freePort();
    const auto log = (folder_ / "log").string();
    process_.emplace(
        asServer({"sh", "-c", R"(exec 2>> "$4"; cd "$2" && exec "$1" -D "$2" -p "$3")", "sh",
                  (programs() / "postgres").string(), (folder_ / "data").string(), std::to_string(port_), log}));
    // The server's eighth line says how far it is.
    const auto isReady = [&] {
        std::ifstream state(folder_ / "data/postmaster.pid");
        std::string line;
        for (int number = 0; number < 8; ++number)
            if (!std::getline(state, line)) return false;
        return line.starts_with("ready");
    };
    const auto end = uptime() + 30s;
    while (!isReady()) {
        if (hasEnded(process_->pid()) || uptime() > end) {
            process_.reset();
            port_ = 0;
            return false;
        }
        ::poll(nullptr, 0, 5);
    }
    return true;
}

void PostgresServer::furnish(PostgresSetUp::Schema schema) const {
    std::string roles = "CREATE ROLE owner LOGIN CREATEROLE PASSWORD 'owner-pw';\n";
    for (const char* role : {"alice", "bob", "rita", "stranger"})
        roles += fmt::format("CREATE ROLE {0} LOGIN PASSWORD '{0}-pw';\n", role);
    sql("admin", roles + "CREATE DATABASE quorvane OWNER owner;\n", "postgres");
    if (schema == PostgresSetUp::Schema::none) return;
    sql("owner", migrationText(1) + (schema == PostgresSetUp::Schema::newest ? migrationText(2) : "") +
                     "GRANT quorvane_user TO alice, bob;\nGRANT quorvane_reader TO rita;\n");
}

void PostgresServer::stop() {
    resume();
    process_->send(SIGINT);
    process_->wait();
    process_.reset();
}

void PostgresServer::pause() {
    signalAll(SIGSTOP);
    isPaused_ = true;
}

void PostgresServer::resume() {
    if (std::exchange(isPaused_, false)) signalAll(SIGCONT);
}

int PostgresServer::terminateBackends(const std::string& role) const {
    return numberIn(sql("admin", fmt::format("SELECT count(pg_terminate_backend(pid, 5000)) FROM pg_stat_activity "
                                             "WHERE usename = '{}';",
                                             role)));
}

/// The server first when it stops, so that it starts nobody new meanwhile.
void PostgresServer::signalAll(int signal) const {
    const auto pid = process_->pid();
    process_->send(signal);
    std::ifstream children(fmt::format("/proc/{0}/task/{0}/children", pid));
    for (pid_t child = 0; children >> child;)
        ::kill(child, signal);
}

std::string migrationText(int number) {
    for (const auto& file : std::filesystem::directory_iterator(QUORVANE_MIGRATIONS))
        if (file.path().filename().string().starts_with(fmt::format("{:04}-", number))) return contentOf(file.path());
    throw std::runtime_error(fmt::format("there is no migration {}", number));
}

}  // namespace quorvane

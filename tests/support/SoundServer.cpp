#include "support/SoundServer.h"

#include <QProcess>
#include <QRegularExpression>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

namespace quillon {

namespace {

constexpr std::chrono::seconds limit{8};

std::optional<std::string> printedBy(const QStringList& words) {
    QProcess process;
    process.start(QStringLiteral("pactl"), words);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        return std::nullopt;
    }
    return process.readAllStandardOutput().toStdString();
}

} // namespace

SoundServer::SoundServer() {
    const auto runtime = folder_.path() / "run";
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    ::setenv("HOME", folder_.path().c_str(), 1);
    for (const char* other : {"PULSE_SERVER", "PULSE_RUNTIME_PATH", "XDG_CONFIG_HOME", "DISPLAY"}) {
        ::unsetenv(other);
    }
}

SoundServer::~SoundServer() { kill(); }

void SoundServer::start(const std::vector<std::string>& sinks) {
    // Like its X server, it does not outlive a test that is killed.
    QStringList words{"--pdeathsig",
                      "KILL",
                      "pulseaudio",
                      "-n",
                      "--daemonize=no",
                      "--use-pid-file=no",
                      "--exit-idle-time=-1",
                      "--realtime=no",
                      "-L",
                      "module-native-protocol-unix"};
    for (const std::string& sink : sinks) {
        words << "-L" << QString::fromStdString("module-null-sink sink_name=" + sink);
    }
    daemon_ = std::make_unique<ChildProgram>("setpriv", words);
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!printedBy({"info"})) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw std::runtime_error("pulseaudio did not start: " + daemon_->errors());
        }
    }
}

void SoundServer::kill() { daemon_.reset(); }

std::string SoundServer::pactl(const std::string& words) {
    auto printed = printedBy(QString::fromStdString(words).split(u' '));
    if (!printed) {
        throw std::runtime_error("pactl " + words + " failed");
    }
    return *std::move(printed);
}

std::vector<std::uint32_t> SoundServer::volumes(const std::string& sink) {
    const QString text = QString::fromStdString(pactl("get-sink-volume " + sink));
    std::vector<std::uint32_t> values;
    const QRegularExpression raw(QStringLiteral(": +(\\d+) /"));
    for (const auto& match : raw.globalMatch(text)) {
        values.push_back(match.captured(1).toUInt());
    }
    return values;
}

bool SoundServer::isMuted(const std::string& sink) {
    return pactl("get-sink-mute " + sink).find("yes") != std::string::npos;
}

} // namespace quillon

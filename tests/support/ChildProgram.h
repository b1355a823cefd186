#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace quillon {

/// A program that runs as long as this object, and what it says. Waiting has a limit that no
/// passing test reaches.
class ChildProgram {
  public:
    ChildProgram(
        const std::string& program, const QStringList& arguments,
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
        process_.setProcessEnvironment(environment);
        process_.start(QString::fromStdString(program), arguments);
    }
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram() { end(); }

    /// Writes a line to its standard input.
    void tell(const char* line) {
        process_.write(line);
        process_.write("\n");
        process_.waitForBytesWritten(limit);
    }

    /// Reads on until it says the line.
    bool says(const QString& line) {
        QElapsedTimer waited;
        waited.start();
        while (true) {
            while (process_.canReadLine()) {
                said_ << QString::fromUtf8(process_.readLine()).trimmed();
                if (said_.last() == line) {
                    return true;
                }
            }
            if (waited.elapsed() > limit || !process_.waitForReadyRead(limit)) {
                return false;
            }
        }
    }

    /// Reads one more line.
    QString nextLine() {
        while (!process_.canReadLine() && process_.waitForReadyRead(limit)) {
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }

    /// Its exit status once it has ended by itself; -1 when it does not.
    int status() {
        const bool ended =
            process_.state() == QProcess::NotRunning || process_.waitForFinished(limit);
        return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }

    std::string errors() { return process_.readAllStandardError().toStdString(); }

    /// How often its threads have gone to sleep so far.
    [[nodiscard]] long sleeps() const {
        long sum = 0;
        const auto tasks = "/proc/" + std::to_string(process_.processId()) + "/task";
        for (const auto& task : std::filesystem::directory_iterator(tasks)) {
            std::ifstream status(task.path() / "status");
            for (std::string word; status >> word;) {
                long number = 0;
                if (word == "voluntary_ctxt_switches:" && status >> number) {
                    sum += number;
                }
            }
        }
        return sum;
    }

    [[nodiscard]] bool isRunning() const { return process_.state() == QProcess::Running; }

    void signal(int number) const { ::kill(static_cast<pid_t>(process_.processId()), number); }

    void end() {
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(limit);
        }
    }

  private:
    static constexpr int limit = 15000; // milliseconds
    QProcess process_;
    QStringList said_;
};

} // namespace quillon

#include "platform/linux/gnome/ProgramOutput.h"

#include <QProcess>

namespace quorvane::platform {

ProgramOutput outputOf(const char* program, const QStringList& arguments, const Deadline& deadline) {
    const std::string name = program;
    QProcess process;
    process.start(QString::fromLatin1(program), arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(deadline.millisecondsLeft()))
        return {.text = {}, .problem = name + " can't be started: " + process.errorString().toStdString()};
    if (!process.waitForFinished(deadline.millisecondsLeft())) {
        process.kill();
        process.waitForFinished(1000);
        return {.text = {}, .problem = name + " does not end"};
    }
    const auto text = process.readAllStandardOutput().toStdString();
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return {.hasSucceeded = true, .text = text, .problem = {}};
    const auto said = QString::fromUtf8(process.readAllStandardError()).simplified().toStdString();
    return {.text = text, .problem = name + (said.empty() ? " has failed" : ": " + said)};
}

}  // namespace quorvane::platform

#pragma once

// Runs one of the project's programs, built next to the test, off screen.
#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

struct ProgramRun {
    int ExitCode = -1; // -1: still running after a minute, -2: crashed
    QString Out;
    QString Err;
};

// `variables` ("NAME=value") are set for the program after the off-screen platform.
inline ProgramRun RunProgram(const QString& program, const QStringList& arguments,
                             const QStringList& variables = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    for (const QString& variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program, arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

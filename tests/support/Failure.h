#pragma once

// What an action throws: the message of its EQXError, whether that was a
// statement timeout, and how long the action took.
#include "repository/Errors.h"
#include "sqlaccess/SqlStatement.h"

#include <QElapsedTimer>

struct Failure {
    QString Message = QStringLiteral("(nothing thrown)");
    bool TimedOut = false;
    qint64 Seconds = -1;
};

template <typename Action> Failure FailureOf(Action&& action) {
    QElapsedTimer clock;
    clock.start();
    Failure failure;
    try {
        action();
    } catch (const EQXStatementTimeout& e) {
        failure = {e.Message(), true};
    } catch (const EQXError& e) {
        failure.Message = e.Message();
    }
    failure.Seconds = clock.elapsed() / 1000;
    return failure;
}

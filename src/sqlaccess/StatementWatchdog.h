#pragma once

#include <QSqlDatabase>

#include <chrono>

// The client's own guard for a PostgreSQL statement. statement_timeout and
// lock_timeout are enforced by the server; a server that does not answer at
// all (a stopped backend, a host gone from the network) never sends the
// cancellation either. While a watchdog lives, a background thread watches
// its deadline, the timeout plus a grace; when the deadline passes, the
// connection's socket is shut down, so that the blocked libpq call returns
// with an error. The connection is lost then.
//
// A SQLite connection, or a timeout of 0, is not watched.
class StatementWatchdog {
public:
    StatementWatchdog(const QSqlDatabase& db, int timeoutSeconds);
    ~StatementWatchdog();
    StatementWatchdog(const StatementWatchdog&) = delete;
    StatementWatchdog& operator=(const StatementWatchdog&) = delete;

    // The server has answered and is asked again: the deadline starts anew.
    void Restart();
    // The client works on what it got: no deadline until the next Restart.
    void Pause();
    // Whether the deadline passed and the connection was broken off.
    bool Fired() const;

    // Seconds given beyond the timeout: the server's own cancellation comes
    // first when the server is alive.
    static int GraceSeconds(int timeoutSeconds);

    struct Watch {
        int socket = -1;
        std::chrono::steady_clock::time_point deadline;
        bool fired = false;
    };

private:
    Watch FWatch;
    std::chrono::steady_clock::duration FSpan{};
    bool FActive = false;
};

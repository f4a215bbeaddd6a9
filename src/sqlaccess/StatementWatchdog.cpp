#include "sqlaccess/StatementWatchdog.h"

#include "sqlaccess/RepositoryConnection.h"

#include <QSqlDriver>
#include <QVariant>

#include <libpq-fe.h>
#include <sys/socket.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Watch = StatementWatchdog::Watch;

// The socket of a PostgreSQL connection, or -1.
int SocketOf(const QSqlDatabase& db) {
    if (!IsPostgreSQL(db) || db.driver() == nullptr)
        return -1;
    const QVariant handle = db.driver()->handle();
    // Qt names the type after the struct behind the typedef in Qt 6.
    if (!handle.isValid() ||
        (qstrcmp(handle.typeName(), "PGconn*") != 0 && qstrcmp(handle.typeName(), "pg_conn*") != 0))
        return -1;
    PGconn* connection = *static_cast<PGconn* const*>(handle.constData());
    return connection == nullptr ? -1 : PQsocket(connection);
}

// One thread for every watch of the process. It sleeps until the earliest
// deadline; a watch that ends before it only leaves the list, so a statement
// that answers in time costs a lock and, when the thread was idle, a wake-up.
class Watcher {
public:
    static Watcher& Instance() {
        static Watcher watcher;
        return watcher;
    }

    void Add(Watch* watch) {
        std::lock_guard lock(FMutex);
        FWatches.push_back(watch);
        if (!FThread.joinable())
            FThread = std::thread([this] { Run(); });
        if (FIdle)
            FWake.notify_one();
    }

    void Remove(Watch* watch) {
        std::lock_guard lock(FMutex);
        FWatches.erase(std::remove(FWatches.begin(), FWatches.end(), watch), FWatches.end());
    }

    void SetDeadline(Watch* watch, Clock::time_point deadline) {
        std::lock_guard lock(FMutex);
        const bool earlier = deadline < watch->deadline;
        watch->deadline = deadline;
        if (earlier)
            FWake.notify_one();
    }

    bool Fired(const Watch* watch) {
        std::lock_guard lock(FMutex);
        return watch->fired;
    }

    ~Watcher() {
        {
            std::lock_guard lock(FMutex);
            FStopping = true;
        }
        FWake.notify_one();
        if (FThread.joinable())
            FThread.join();
    }

private:
    Watcher() = default;

    void Run() {
        std::unique_lock lock(FMutex);
        while (!FStopping) {
            Clock::time_point next = Clock::time_point::max();
            const Clock::time_point now = Clock::now();
            for (Watch* watch : FWatches) {
                if (watch->fired)
                    continue;
                if (watch->deadline <= now) {
                    // The blocked call sees the connection end and returns.
                    ::shutdown(watch->socket, SHUT_RDWR);
                    watch->fired = true;
                } else {
                    next = std::min(next, watch->deadline);
                }
            }
            FIdle = next == Clock::time_point::max();
            if (FIdle)
                FWake.wait(lock);
            else
                FWake.wait_until(lock, next);
        }
    }

    std::mutex FMutex;
    std::condition_variable FWake;
    std::vector<Watch*> FWatches;
    std::thread FThread;
    bool FIdle = true;
    bool FStopping = false;
};

} // namespace

StatementWatchdog::StatementWatchdog(const QSqlDatabase& db, int timeoutSeconds) {
    if (timeoutSeconds <= 0)
        return;
    FWatch.socket = SocketOf(db);
    if (FWatch.socket < 0)
        return;
    FSpan = std::chrono::seconds(timeoutSeconds + GraceSeconds(timeoutSeconds));
    FWatch.deadline = Clock::now() + FSpan;
    FActive = true;
    Watcher::Instance().Add(&FWatch);
}

StatementWatchdog::~StatementWatchdog() {
    if (FActive)
        Watcher::Instance().Remove(&FWatch);
}

void StatementWatchdog::Restart() {
    if (FActive)
        Watcher::Instance().SetDeadline(&FWatch, Clock::now() + FSpan);
}

void StatementWatchdog::Pause() {
    if (FActive)
        Watcher::Instance().SetDeadline(&FWatch, Clock::time_point::max());
}

bool StatementWatchdog::Fired() const {
    return FActive && Watcher::Instance().Fired(&FWatch);
}

int StatementWatchdog::GraceSeconds(int timeoutSeconds) {
    return 2 + timeoutSeconds / 10;
}

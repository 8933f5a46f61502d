#include "du/TaskPool.h"

#include <gtest/gtest.h>

#include <functional>
#include <latch>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ErrorOf.h"

namespace du {
namespace {

/// What the tasks did, in order.
class Log {
public:
    void Add(const std::string& line) {
        const std::lock_guard hold(m_mutex);
        m_lines.push_back(line);
    }
    std::vector<std::string> Lines() const {
        const std::lock_guard hold(m_mutex);
        return m_lines;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_lines;
};

class Job : public Task {
public:
    Job(Log& log, std::string name, int priority, std::function<void()> work = {})
        : m_log(log), m_name(std::move(name)), m_priority(priority), m_work(std::move(work)) {}
    int GetPriority() const override { return m_priority; }
    void Run() override {
        if (m_work) m_work();
        m_log.Add("run " + m_name);
    }
    void TaskComplete() override { m_log.Add("done " + m_name); }
    void Abort() override { m_log.Add("abort " + m_name); }

protected:
    Log& m_log;

private:
    const std::string m_name;
    const int m_priority;
    const std::function<void()> m_work;
};

class TaskPoolTest : public testing::Test {
protected:
    bool Insert(TaskPool& pool, const std::string& name, int priority, std::function<void()> work = {}) {
        return pool.InsertTask(new Job(m_log, name, priority, std::move(work)));
    }
    /// Keeps the pool's only thread busy until `m_gate` opens, so that what follows queues up.
    void Block(TaskPool& pool) {
        Insert(pool, "gate", 0, [this] {
            m_started.count_down();
            m_gate.wait();
        });
        m_started.wait();
    }

    Log m_log;
    std::latch m_started{1};
    std::latch m_gate{1};
};

TEST_F(TaskPoolTest, RunsHigherPrioritiesFirstAndEqualOnesInTurn) {
    TaskPool pool(1);
    Block(pool);
    Insert(pool, "low", -1);
    Insert(pool, "a", 5);
    Insert(pool, "high", 9);
    Insert(pool, "b", 5);
    m_gate.count_down();
    pool.WaitIdle();
    EXPECT_EQ(m_log.Lines(),
              (std::vector<std::string>{"run gate", "done gate", "run high", "done high", "run a", "done a",
                                        "run b", "done b", "run low", "done low"}));
}

TEST_F(TaskPoolTest, AbortsWhatIsQueuedButFinishesWhatRuns) {
    TaskPool pool(1);
    Block(pool);
    Insert(pool, "x", 1);
    Insert(pool, "y", 2);
    std::thread opener([this] {
        while (m_log.Lines().size() < 2)
            std::this_thread::yield();  // both are aborted while the gate still runs
        m_gate.count_down();
    });
    pool.Shutdown();
    opener.join();
    EXPECT_EQ(m_log.Lines(), (std::vector<std::string>{"abort y", "abort x", "run gate", "done gate"}));
    EXPECT_FALSE(Insert(pool, "late", 0));
    pool.Shutdown();
    EXPECT_EQ(m_log.Lines().size(), 4U);
}

// The pool outlives what goes wrong in a task, and tells whoever waits, once.
TEST_F(TaskPoolTest, GoesOnBehindATaskThatThrows) {
    TaskPool pool(1);
    Insert(pool, "bad", 2, [] { throw std::runtime_error("too hot"); });
    Insert(pool, "worse", 1, [] { throw std::runtime_error("too cold"); });
    Insert(pool, "good", 0);
    EXPECT_EQ(zrtest::ErrorOf([&] { pool.WaitIdle(); }), "too hot");
    EXPECT_EQ(m_log.Lines(), (std::vector<std::string>{"run good", "done good"}));
    Insert(pool, "next", 0);
    pool.WaitIdle();
    EXPECT_EQ(m_log.Lines().size(), 4U);
}

}  // namespace
}  // namespace du

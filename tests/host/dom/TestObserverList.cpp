#include "dom/ObserverList.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "dom/Observer.h"
#include "tests/support/OnThreads.h"

namespace dom {
namespace {

class Listener : public Observer {
public:
    Listener(std::string& heard, char name) : m_heard(heard), m_name(name) {}
    ~Listener() override { m_heard += '~'; }
    void Tell() {
        m_heard += m_name;
        if (m_onTell) m_onTell();
    }
    std::function<void()> m_onTell;

private:
    std::string& m_heard;
    const char m_name;
};

class ObserverListTest : public testing::Test {
protected:
    using ListenerPtr = du::SmartPtr<Listener>;

    ListenerPtr Add(char name) {
        const ListenerPtr listener(new Listener(m_heard, name));
        m_list->Register(listener);
        return listener;
    }
    /// What was heard in one round.
    std::string Notify() {
        m_heard.clear();
        m_list->NotifyAll([](Listener& listener) { listener.Tell(); });
        return m_heard;
    }

    std::string m_heard;
    std::unique_ptr<ObserverList<Listener>> m_list = std::make_unique<ObserverList<Listener>>();
};

// Who is told in a round stands when it begins: one thrown out meanwhile is still alive, one that joins
// waits.
TEST_F(ObserverListTest, TellsThoseOfTheBeginningWhenOthersComeAndGo) {
    const auto a = Add('a');
    auto b = Add('b');
    ListenerPtr late;
    a->m_onTell = [&] {
        m_list->Unregister(b);
        b = nullptr;
        late = Add('c');
        a->m_onTell = nullptr;
    };
    EXPECT_EQ(Notify(), "ab~");
    EXPECT_EQ(Notify(), "ac");
}

TEST_F(ObserverListTest, ServesThreadsThatJoinLeaveAndNotify) {
    std::atomic<bool> isOver{false};
    std::atomic<int> told{0};
    std::thread notifier([&] {
        while (!isOver) m_list->NotifyAll([&](Listener&) { ++told; });
    });
    zrtest::OnThreads(3, [this](std::size_t) {
        std::string own;
        for (int round = 0; round < 500; ++round) {
            const ListenerPtr listener(new Listener(own, 'x'));
            m_list->Register(listener);
            m_list->Unregister(listener);
            while (listener->GetReferenceCount() > 1) std::this_thread::yield();  // a round may still hold it
        }
        EXPECT_EQ(own.size(), 500U);
    });
    isOver = true;
    notifier.join();
    EXPECT_TRUE(m_list->Snapshot().empty());
}

}  // namespace
}  // namespace dom

#include "zrk/object/Observable.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zrk {
namespace {

/// Writes down what is delivered: '(' and ')' frame, letters are the events.
class Recorder : public Observable {
public:
    void Tell(int kind, std::uint64_t id, const std::string& text) {
        Notify({kind, id}, [this, text] {
            m_heard += text;
            if (text == "nested") Tell(9, 9, "answer");
        });
    }
    std::string Heard() { return std::exchange(m_heard, {}); }

private:
    void NotifyBeginUpdate() override { m_heard += '('; }
    void NotifyEndUpdate() override { m_heard += ')'; }

    std::string m_heard;
};

class ObservableTest : public testing::Test {
protected:
    const du::SmartPtr<Recorder> m_recorder{new Recorder};
};

TEST_F(ObservableTest, DeliversEqualOnesOnceInOrderOfFirstArrival) {
    {
        const Observable::UpdateGroup group(m_recorder);
        m_recorder->Tell(2, 1, "b");
        m_recorder->Tell(1, 1, "a");
        m_recorder->Tell(2, 1, "again");
        m_recorder->Tell(2, 2, "c");  // the same event, but of another item
        EXPECT_EQ(m_recorder->Heard(), "");
    }
    EXPECT_EQ(m_recorder->Heard(), "(bac)");
    {
        const Observable::UpdateGroup next(m_recorder);
        m_recorder->Tell(2, 1, "b");  // what was delivered is new again
    }
    EXPECT_EQ(m_recorder->Heard(), "(b)");
}

TEST_F(ObservableTest, WaitsForTheOutermostGroup) {
    auto outer = std::make_unique<Observable::UpdateGroup>(m_recorder);
    {
        const Observable::UpdateGroup inner(m_recorder);
        m_recorder->Tell(1, 1, "a");
    }
    EXPECT_EQ(m_recorder->Heard(), "");
    m_recorder->Tell(1, 2, "b");
    outer = nullptr;
    EXPECT_EQ(m_recorder->Heard(), "(ab)");
}

TEST_F(ObservableTest, HoldsNoLockWhileItDelivers) {
    {
        const Observable::UpdateGroup group(m_recorder);
        m_recorder->Tell(1, 1, "nested");
    }
    EXPECT_EQ(m_recorder->Heard(), "(nested(answer))");
}

}  // namespace
}  // namespace zrk

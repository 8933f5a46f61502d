#include "dom/ManagedObject.h"

#include <gtest/gtest.h>

#include <memory>

#include "dom/Observer.h"
#include "dom/ObserverList.h"

namespace dom {
namespace {

class Mortal : public Observer {
public:
    explicit Mortal(bool& isAlive) : m_isAlive(isAlive) { m_isAlive = true; }
    ~Mortal() override { m_isAlive = false; }

private:
    bool& m_isAlive;
};

class ManagedObjectTest : public testing::Test {
protected:
    /// Held by the manager alone, as the application does with observers that it has no other place for.
    Mortal* MakeManaged() {
        auto* const mortal = new Mortal(m_isAlive);
        m_manager->ManageObject(mortal);
        return mortal;
    }

    du::SmartPtr<ManagedObject> m_manager{new ManagedObject};
    bool m_isAlive = false;
};

TEST_F(ManagedObjectTest, DropsAnObserverThatLeftItsLastRegistry) {
    ObserverList<Mortal> first;
    ObserverList<Mortal> second;
    const du::SmartPtr<Mortal> mortal(MakeManaged());
    first.Register(mortal);
    first.Register(mortal);
    second.Register(mortal);
    first.Unregister(mortal);
    EXPECT_EQ(m_manager->GetManaged().size(), 1U);
    second.Unregister(mortal);
    EXPECT_TRUE(m_manager->GetManaged().empty());
    EXPECT_EQ(mortal->GetReferenceCount(), 1U);
}

TEST_F(ManagedObjectTest, DropsObserversOfObjectsThatGo) {
    auto list = std::make_unique<ObserverList<Mortal>>();
    list->Register(MakeManaged());
    EXPECT_TRUE(m_isAlive);
    list = nullptr;
    EXPECT_FALSE(m_isAlive);
    EXPECT_TRUE(m_manager->GetManaged().empty());
}

TEST_F(ManagedObjectTest, LetsEverythingGoWhenItDies) {
    ObserverList<Mortal> list;
    const du::SmartPtr<Mortal> mortal(MakeManaged());
    list.Register(mortal);
    m_manager = nullptr;
    EXPECT_TRUE(m_isAlive);
    list.Unregister(mortal);  // finds no manager any more
    EXPECT_EQ(mortal->GetReferenceCount(), 1U);
    m_manager = new ManagedObject;
    MakeManaged();
    m_manager = nullptr;
    EXPECT_FALSE(m_isAlive);
}

TEST_F(ManagedObjectTest, ReleasesOnlyWhatItManages) {
    const du::SmartPtr<ManagedObject> other(new ManagedObject);
    Mortal* const mortal = MakeManaged();
    m_manager->ManageObject(nullptr);
    m_manager->ManageObject(mortal);
    other->ReleaseManaged(mortal);
    EXPECT_TRUE(m_isAlive);
    EXPECT_EQ(m_manager->GetManaged().size(), 1U);
    m_manager->ReleaseManaged(mortal);
    EXPECT_FALSE(m_isAlive);
}

TEST_F(ManagedObjectTest, LetsAnObjectLeaveByItself) {
    const du::SmartPtr<Mortal> mortal(MakeManaged());
    mortal->LeaveManager();
    mortal->LeaveManager();
    EXPECT_EQ(mortal->GetReferenceCount(), 1U);
}

}  // namespace
}  // namespace dom

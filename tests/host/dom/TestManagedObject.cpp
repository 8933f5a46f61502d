#include "dom/ManagedObject.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace dom {
namespace {

/// Writes its name down when it goes.
class Named : public ManagedObject {
public:
    Named(char name, std::string& gone) : m_name(name), m_gone(gone) {}
    ~Named() override { m_gone += m_name; }
    char Name() const { return m_name; }

private:
    const char m_name;
    std::string& m_gone;
};

std::string Managed(const ManagedObject& manager) {
    std::string names;
    for (const auto& object : manager.GetManaged()) names += du::DynamicCast<Named>(object)->Name();
    return names;
}

TEST(ManagedObject, LivesUntilItLeavesItsManagerOrThatGoes) {
    std::string gone;
    const du::SmartPtr<ManagedObject> first(new ManagedObject);
    du::SmartPtr<ManagedObject> second(new ManagedObject);
    for (const char name : {'a', 'b', 'c', 'd', 'e'})
        first->ManageObject(du::SmartPtr<ManagedObject>(new Named(name, gone)));
    auto objects = first->GetManaged();
    first->ManageObject(objects[1]);
    EXPECT_EQ(Managed(*first), "abcde") << "again";
    for (const std::size_t middleFirstLast : {2U, 0U, 4U}) objects[middleFirstLast]->LeaveManager();
    EXPECT_EQ(Managed(*first), "bd");
    objects[2]->LeaveManager();
    second->ManageObject(objects[1]);
    second->ManageObject(objects[0]);
    EXPECT_EQ(Managed(*first) + '|' + Managed(*second), "d|ba");
    objects.clear();
    EXPECT_EQ(gone, "ce");
    second = nullptr;
    EXPECT_EQ(gone, "ceba");
    EXPECT_EQ(Managed(*first), "d");
}

}  // namespace
}  // namespace dom

#include "zrk/object/Object.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zrk/object/ObjectWithRWLock.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/tree/Instance.h"

namespace zrk {
namespace {

TEST(Object, KnowsItsClassesFromItsOwnUpwards) {
    const du::SmartPtr<Object> scene(new ShapeScene);
    std::vector<const ClassType*> types;
    scene->GetClassTypes(types);
    std::string names;
    for (const ClassType* type : types) names += std::string(type->GetName()) + ' ';
    EXPECT_EQ(names, "zrk::ShapeScene zrk::Scene zrk::Object ");
    EXPECT_TRUE(scene->IsATypeOfId(Scene::CLASS_TYPE.GetId()));
    EXPECT_FALSE(scene->IsATypeOfId(Instance::CLASS_TYPE.GetId()));
    EXPECT_FALSE(du::SmartPtr<Scene>(new Scene)->IsATypeOfId(ShapeScene::CLASS_TYPE.GetId()));
}

TEST(Object, KeepsForeignDataUnderOneKeyEach) {
    const du::SmartPtr<Object> object(new Object);
    const du::Symbol key("test.key");
    const du::Symbol other("test.other");
    du::UserData first;
    du::UserData second;
    EXPECT_EQ(object->GetUserData(key), nullptr);
    EXPECT_TRUE(object->AddUserData(key, &first));
    EXPECT_FALSE(object->AddUserData(key, &second));  // the key is taken: the first stays
    EXPECT_TRUE(object->AddUserData(other, &second));
    EXPECT_EQ(object->GetUserData(key), &first);
    object->RemoveUserData(key);
    object->RemoveUserData(key);
    EXPECT_EQ(object->GetUserData(key), nullptr);
    EXPECT_EQ(object->GetUserData(other), &second);
    EXPECT_FALSE(object->GetRefCountedUserData(other));  // a name space of its own
}

TEST(Object, HoldsCountedDataAsLongAsItLives) {
    const du::Symbol key("test.counted");
    const du::SmartPtr<du::RefCounted> data(new du::RefCounted);
    du::SmartPtr<Object> object(new Object);
    EXPECT_TRUE(object->AddRefCountedUserData(key, data));
    EXPECT_FALSE(object->AddRefCountedUserData(key, new du::RefCounted));
    EXPECT_EQ(object->GetRefCountedUserData(key), data);
    EXPECT_EQ(data->GetReferenceCount(), 2U);
    object->RemoveUserData(key);
    EXPECT_FALSE(object->GetRefCountedUserData(key));
    EXPECT_EQ(data->GetReferenceCount(), 1U);
    EXPECT_TRUE(object->AddRefCountedUserData(key, data));
    object = nullptr;
    EXPECT_EQ(data->GetReferenceCount(), 1U);
}

TEST(ObjectWithRWLock, SharesItsLockOrRunsUnlocked) {
    const du::SmartPtr<ReadWriteLock> lock(new ReadWriteLock);
    const du::SmartPtr<ObjectWithRWLock> one(new ObjectWithRWLock(lock));
    const du::SmartPtr<ObjectWithRWLock> two(new ObjectWithRWLock(lock));
    EXPECT_EQ(one->GetRWLockPtr(), two->GetRWLockPtr());
    EXPECT_EQ(du::SmartPtr<ObjectWithRWLock>(new ObjectWithRWLock(nullptr))->GetRWLockPtr(), nullptr);
}

}  // namespace
}  // namespace zrk

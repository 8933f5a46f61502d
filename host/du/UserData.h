// Base of what callers may attach to an object.

#pragma once

namespace du {

class UserData {
public:
    UserData() = default;
    UserData(const UserData&) = default;
    UserData& operator=(const UserData&) = default;
    virtual ~UserData();
};

}  // namespace du

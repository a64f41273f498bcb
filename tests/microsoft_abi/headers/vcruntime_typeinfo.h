// Stands in for <vcruntime_typeinfo.h>: what the compiler needs for typeid and dynamic_cast.
#pragma once

#include <vcruntime_exception.h>

class type_info {
  public:
    type_info(const type_info&) = delete;
    type_info& operator=(const type_info&) = delete;
    virtual ~type_info();
    size_t hash_code() const noexcept;
    bool operator==(const type_info&) const noexcept;
    bool before(const type_info&) const noexcept;
    const char* name() const noexcept;
    const char* raw_name() const noexcept;

  private:
    mutable const char* name_;
    const char decoratedName_[1];
};

namespace std {

using ::type_info;

class bad_cast : public exception {
  public:
    bad_cast() noexcept : exception("bad cast", 1) {}
};

class bad_typeid : public exception {
  public:
    bad_typeid() noexcept : exception("bad typeid", 1) {}
};

} // namespace std

// Stands in for <vcruntime_exception.h>: the roots of the library's exceptions, with the layout that
// vcruntime140.dll knows. A text is either borrowed or a copy that belongs to the exception.
#pragma once

#include <eh.h>

#define _HAS_EXCEPTIONS 1

struct __std_exception_data {
    const char* _What;
    bool _DoFree;
};

extern "C" void __cdecl __std_exception_copy(const __std_exception_data*, __std_exception_data*);
extern "C" void __cdecl __std_exception_destroy(__std_exception_data*);

namespace std {

class exception {
  public:
    exception() noexcept : data_() {}

    explicit exception(const char* text) noexcept : data_() {
        const __std_exception_data given = {text, true};
        __std_exception_copy(&given, &data_);
    }

    exception(const char* text, int) noexcept : data_{text, false} {}

    exception(const exception& other) noexcept : data_() {
        __std_exception_copy(&other.data_, &data_);
    }

    exception& operator=(const exception& other) noexcept {
        if (this != &other) {
            __std_exception_destroy(&data_);
            __std_exception_copy(&other.data_, &data_);
        }
        return *this;
    }

    virtual ~exception() noexcept { __std_exception_destroy(&data_); }

    virtual const char* what() const noexcept {
        return data_._What != nullptr ? data_._What : "Unknown exception";
    }

  private:
    __std_exception_data data_;
};

class bad_exception : public exception {
  public:
    bad_exception() noexcept : exception("bad exception", 1) {}
};

class bad_alloc : public exception {
  public:
    bad_alloc() noexcept : exception("bad allocation", 1) {}
};

class bad_array_new_length : public bad_alloc {};

} // namespace std

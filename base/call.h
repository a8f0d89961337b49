#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "base/fatal.h"

/* A call-back as every walk takes it: a plain function, a capturing lambda or null.

   It refers to the callable and doesn't own it, so it may be passed down and called, and never kept
   longer than the call that it was made for. Calling an empty one is fatal error 18. */
template <typename Signature> class Call;

template <typename R, typename... Args> class Call<R(Args...)> {
public:
    Call() = default;
    Call(std::nullptr_t) {}
    Call(R (*function)(Args...)) {
        if (function == nullptr)
            return;
        target_.function = reinterpret_cast<void (*)()>(function);
        invoke_ = [](Target target, Args... args) -> R {
            return reinterpret_cast<R (*)(Args...)>(target.function)(std::forward<Args>(args)...);
        };
    }
    template <typename F, typename = std::enable_if_t<std::is_class_v<std::remove_reference_t<F>> &&
                                                      !std::is_same_v<std::decay_t<F>, Call>>>
    Call(F &&callable) {
        target_.object = const_cast<void *>(static_cast<const void *>(&callable));
        invoke_ = [](Target target, Args... args) -> R {
            return (*static_cast<std::remove_reference_t<F> *>(target.object))(
                std::forward<Args>(args)...);
        };
    }

    explicit operator bool() const { return invoke_ != nullptr; }

    R operator()(Args... args) const {
        if (invoke_ == nullptr)
            fatalError(FATAL_NO_CALLBACK, nullptr);
        return invoke_(target_, std::forward<Args>(args)...);
    }

private:
    union Target {
        void *object;
        void (*function)();
    };
    Target target_ = {nullptr};
    R (*invoke_)(Target, Args...) = nullptr;
};

/* Stops the run with fatal error 18 before a walk starts, also if the walk would call nothing. */
template <typename Signature> void requireCall(const Call<Signature> &call) {
    if (!call)
        fatalError(FATAL_NO_CALLBACK, nullptr);
}

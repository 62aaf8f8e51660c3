#pragma once

#include <type_traits>
#include <utility>

namespace zelpython {

/// One call from Python into the library. Calls nest when a callback in Python calls again.
///
/// Nothing that Python raises crosses the library: a callback that raises refuses, and the first
/// error waits for the end of the outermost call, which raises it. Later ones, and those that no
/// call waits for, are printed as those of a destructor are.
class Entry {
public:
    /// Raises RuntimeError when another thread is in the middle of a call.
    Entry();
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry();

    /// Raises the error that waits, when this is the outermost call. The last thing in each.
    void finish();
};

/// Puts away the error that Python has set, to be raised by the outermost call. The object is whose
/// callback raised it; for the message when no call waits.
void putAwayError(void* object);

namespace detail {

template <class Result, class... Args, class Function>
auto guardedAs(Function function)
{
    return [function](Args... args) -> Result {
        Entry entry;
        if constexpr (std::is_void_v<Result>) {
            function(std::forward<Args>(args)...);
            entry.finish();
        } else {
            Result result = function(std::forward<Args>(args)...);
            entry.finish();
            return result;
        }
    };
}

template <class Function, class Class, class Result, class... Args>
auto guardedCall(Function function, Result (Class::*)(Args...) const)
{
    return guardedAs<Result, Args...>(function);
}

} // namespace detail

/// The function as a call from Python, for class_::def.
template <class Function, class = std::enable_if_t<std::is_class_v<Function>>>
auto guarded(Function function)
{
    return detail::guardedCall(function, &Function::operator());
}
template <class Result, class... Args>
auto guarded(Result (*function)(Args...))
{
    return detail::guardedAs<Result, Args...>(function);
}
template <class Class, class Result, class... Args>
auto guarded(Result (Class::*function)(Args...))
{
    return detail::guardedAs<Result, Class&, Args...>(
        [function](Class& self, Args... args) -> Result {
            return (self.*function)(std::forward<Args>(args)...);
        });
}
template <class Class, class Result, class... Args>
auto guarded(Result (Class::*function)(Args...) const)
{
    return detail::guardedAs<Result, const Class&, Args...>(
        [function](const Class& self, Args... args) -> Result {
            return (self.*function)(std::forward<Args>(args)...);
        });
}

} // namespace zelpython

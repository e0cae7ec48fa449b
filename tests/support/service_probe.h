// A host function of any signature that writes down its arguments, and a call of a service with arguments of that
// signature. Arguments and results are compared as texts, so that one table can hold services of all types.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <tuple>
#include <type_traits>

namespace service_probe {

template <class Type>
std::string text(Type value)
{
    if constexpr (std::is_pointer_v<Type>)
        return "@" + std::to_string(reinterpret_cast<uintptr_t>(value));
    else
        return std::to_string(value);
}

// Values that no other position, width or type would show in the same way.
template <class Type>
Type sample(int position)
{
    if constexpr (std::is_pointer_v<Type>)
        return reinterpret_cast<Type>(0x10010 + 0x1000 * position);
    else if constexpr (std::is_floating_point_v<Type>)
        return static_cast<Type>(1.5 + position);
    else if constexpr (sizeof(Type) == 8)
        return static_cast<Type>(-0x123456789ABCDEFLL + position);
    else if constexpr (sizeof(Type) == 1)
        return static_cast<Type>(200 + position);
    else
        return static_cast<Type>(-70000 - position);
}

template <class Signature>
struct Probe;

template <class Result, class... Arguments>
struct Probe<Result(Arguments...)> {
    static inline std::string seen; // the arguments of the last call

    static Result function(Arguments... arguments)
    {
        seen = listed(arguments...);
        if constexpr (!std::is_void_v<Result>)
            return sample<Result>(7);
    }

    static std::string samples()
    {
        return std::apply([](auto... values) { return listed(values...); }, sampleArguments());
    }
    static std::string answer()
    {
        if constexpr (std::is_void_v<Result>)
            return "";
        else
            return text(sample<Result>(7));
    }
    static std::string neutral()
    {
        if constexpr (std::is_void_v<Result>)
            return "";
        else
            return text(Result());
    }

    // Calls a service with the samples and gives its result as text.
    template <class Service>
    static std::string call(Service service)
    {
        static_assert(std::is_same_v<decltype(service(std::declval<Arguments>()...)), Result>);
        if constexpr (std::is_void_v<Result>) {
            std::apply(service, sampleArguments());
            return "";
        } else {
            return text(std::apply(service, sampleArguments()));
        }
    }

private:
    static std::string listed(Arguments... arguments) { return ((text(arguments) + " ") + ... + ""); }

    static std::tuple<Arguments...> sampleArguments()
    {
        int position = 0;
        return {sample<Arguments>(position++)...}; // braces: from left to right
    }
};

// A service of the plug-in under test, its signature forgotten.
struct Service {
    const char *wrapper;
    const char *entryPoint; // or the declaration of the host method that it is
    void *hostFunction;
    std::function<std::string()> call;
    std::function<std::string()> seen;
    std::string samples, answer, neutral;
};

template <class Signature, class Call>
Service service(const char *wrapper, const char *entryPoint, Call call)
{
    using P = Probe<Signature>;
    return {wrapper,
            entryPoint,
            reinterpret_cast<void *>(P::function),
            [call] { return P::call(call); },
            [] { return P::seen; },
            P::samples(),
            P::answer(),
            P::neutral()};
}

inline void PrintTo(const Service &service, std::ostream *out)
{
    *out << service.wrapper;
}

} // namespace service_probe

// The wrapper's name, the host's name for it and the signature that the host gives it.
#define SERVICE(wrapper, entryPoint, ...)                                                                              \
    service_probe::service<__VA_ARGS__>(#wrapper, entryPoint, [](auto... arguments) { return wrapper(arguments...); })

// What a program can tell of the system and the host that it runs on, and how it speaks to people.
#include <chrono>

#include "host/script/interpreter.h"
#include "host/script/library.h"

namespace script::library {

namespace {

// The embedded host plays one for 32-bit Intel Macs, wherever it runs itself.
constexpr auto yes = constant<true>;
constexpr auto no = constant<false>;

// Hosts without a version number are named after their year.
double version()
{
    const host::Profile &profile = host::Host::shared().profile();
    return profile.version.value_or(strtod(profile.name.c_str(), nullptr));
}

std::string versionText()
{
    int year = int(version());
    int release = int((version() - year) * 100 + 0.5);
    return std::to_string(year) + "r" + std::to_string(release % 10 ? release : release / 10);
}

Value microseconds(A, At)
{
    using namespace std::chrono;
    return Value(double(duration_cast<std::chrono::microseconds>(steady_clock::now().time_since_epoch()).count()));
}

// What the system answers about itself: that it runs on Intel processors, as the played host does. Which version of Mac
// OS it would be is nothing that this host decides.
Value gestalt(A arguments, At)
{
    constexpr int kSysArchitectureIntel = 10;
    bool isKnown = arguments[0].text() == "sysa";
    if (isKnown)
        arguments[1] = Value(kSysArchitectureIntel);
    return Value(isKnown);
}

constexpr int kFirstButton = 1;

} // namespace

LibraryRows hostRows()
{
    return {
        {"DebugBuild As Boolean", no},
        {"Microseconds As Double", microseconds},
        {"MsgBox(text As String)",
         [](A a, At) {
             writeLine(stdout, a[0].text());
             return Value();
         }},
        {"MsgBox(text As String, buttons As Integer, Optional title As String) As Integer",
         [](A a, At) {
             writeLine(stdout, a[0].text());
             return Value(kFirstButton);
         }},
        {"RBVersion As Double", [](A, At) { return Value(version()); }},
        {"RBVersionString As String", [](A, At) { return Value(versionText()); }},
        {"Shared System.DebugLog(text As String)",
         [](A a, At) {
             writeLine(stderr, a[0].text());
             return Value();
         }},
        {"Shared System.Gestalt(selector As String, ByRef response As Integer) As Boolean", gestalt},
        {"Target32Bit As Boolean", yes},
        {"Target64Bit As Boolean", no},
        {"TargetBigEndian As Boolean", no},
        {"TargetCarbon As Boolean", no},
        {"TargetCocoa As Boolean", yes},
        {"TargetHasGUI As Boolean", no},
        {"TargetLinux As Boolean", no},
        {"TargetLittleEndian As Boolean", yes},
        {"TargetMachO As Boolean", yes},
        {"TargetMacOS As Boolean", yes},
        {"TargetPowerPC As Boolean", no},
        {"TargetWeb As Boolean", no},
        {"TargetWin32 As Boolean", no},
        {"TargetX86 As Boolean", yes},
        {"Ticks As Integer",
         [](A a, At place) { return Value(int32_t(int64_t(microseconds(a, place).number() * 60 / 1e6))); }},
        {"XojoVersion As Double", [](A, At) { return Value(version()); }},
        {"XojoVersionString As String", [](A, At) { return Value(versionText()); }},
    };
}

} // namespace script::library

// What the language brings along beside the host's classes: functions, constants, and members of its types and of the
// host's classes that no plug-in asks for. Each is one row of a table in library/.
#pragma once

#include <string>
#include <vector>

#include "host/declaration.h"
#include "host/script/raised.h"
#include "host/script/types.h"

namespace script {

// A declaration in the language's own form, and what it does:
//
//     "Sqrt(number As Double) As Double"                  a function
//     "Trim(Extends text As String) As String"            a function that is a member of its first argument, too
//     "Date.SQLDate As String"                            a member; the object is the first argument
//     "Shared SpecialFolder.Temporary As FolderItem"      a member of a class, or of a name that is no class
//
// Parameters behind "Optional" can be left out, and then are missing from the arguments; "ParamArray" takes any number;
// a variable that is passed "ByRef" gets what `run` leaves in its argument.
struct LibraryRow {
    using Run = host::Value (*)(host::Arguments &arguments, const Place &place);

    LibraryRow(const char *text, Run run, Run assign = nullptr);

    std::string text; // as messages show it
    std::string owner;
    bool isShared = false;
    bool isExtension = false;      // of the first parameter
    host::Declaration declaration; // without the object of a member
    size_t required = 0;           // parameters that cannot be left out
    bool repeats = false;          // the last one
    std::vector<size_t> byRef;     // parameters that are passed ByRef
    Run run;                       // the arguments are of the declared types; throws Raised
    Run assign;                    // the value is the last argument; null when it cannot be assigned to
    Type self() const;             // of the object that a member is called on
    bool isConstant() const { return owner.empty() && declaration.parameters.empty(); }
};

// Several rows can share a name.
std::vector<const LibraryRow *> libraryFunctions(const std::string &name);
std::vector<const LibraryRow *> libraryMembers(const Type &object, const std::string &name);
std::vector<const LibraryRow *> librarySharedMembers(const std::string &owner, const std::string &name);
bool isLibraryOwner(const std::string &name); // of shared members, without being a class

// For completion and suggestions, each once.
std::vector<std::string> libraryFunctionNames();
std::vector<std::string> libraryMemberNames(const Type &object);
std::vector<std::string> librarySharedNames(const std::string &owner);

using LibraryRows = std::vector<LibraryRow>;
const LibraryRows &libraryRows();

namespace library {

using host::Value;

// What a row is run with.
using A = host::Arguments &;
using At = const Place &;

template <auto value>
Value constant(A, At)
{
    return Value(value);
}

// One function for each file of library/.
LibraryRows textRows();
LibraryRows numberRows();
LibraryRows valueRows();
LibraryRows dateRows();
LibraryRows memoryBlockRows();
LibraryRows fileRows();
LibraryRows hostRows();

} // namespace library

} // namespace script

#include "host/script/library.h"

#include <algorithm>

namespace script {

// Takes words of the declaration away that the host's own declarations do not know.
static bool take(std::string &text, size_t from, const std::string &word)
{
    bool found = text.compare(from, word.size(), word) == 0;
    if (found)
        text.erase(from, word.size());
    return found;
}

LibraryRow::LibraryRow(const char *given, Run runs, Run assigns) : run(runs), assign(assigns)
{
    std::string plain = given;
    isShared = take(plain, 0, "Shared ");
    size_t name = std::min(plain.find('('), plain.find(' '));
    size_t dot = plain.rfind('.', name);
    if (dot != std::string::npos) {
        owner = plain.substr(0, dot);
        plain.erase(0, dot + 1);
    }
    size_t bracket = plain.find('(');
    isExtension = bracket != std::string::npos && take(plain, bracket + 1, "Extends ");
    text = (owner.empty() ? "" : owner + ".") + plain;
    size_t optionalCount = 0;
    for (size_t at; (at = plain.find("Optional ")) != std::string::npos; optionalCount++)
        take(plain, at, "Optional ");
    for (size_t at; (at = plain.find("ByRef ")) != std::string::npos; take(plain, at, "ByRef "))
        byRef.push_back(std::count(plain.begin(), plain.begin() + at, ','));
    size_t repeated = plain.find("ParamArray ");
    repeats = repeated != std::string::npos && take(plain, repeated, "ParamArray ");
    declaration = host::parseDeclaration(plain);
    required = declaration.parameters.size() - optionalCount - (repeats ? 1 : 0);
}

Type LibraryRow::self() const
{
    return isExtension ? declaration.parameters.front().type : typeNamed(owner);
}

const LibraryRows &libraryRows()
{
    static const LibraryRows *all = [] {
        auto *made = new LibraryRows;
        using namespace library;
        for (auto part : {textRows, numberRows, valueRows, dateRows, memoryBlockRows, fileRows, hostRows})
            for (LibraryRow &row : part())
                made->push_back(std::move(row));
        return made;
    }();
    return *all;
}

static bool isMemberOf(const LibraryRow &row, const Type &object)
{
    bool isMember = row.isExtension || (!row.owner.empty() && !row.isShared);
    bool isSameKind = isVariant(row.self()) == isVariant(object) && isString(row.self()) == isString(object);
    return isMember && isSameKind && fit(row.self(), object);
}

static bool isFunction(const LibraryRow &row)
{
    return row.owner.empty();
}

template <class Condition>
static std::vector<const LibraryRow *> chosen(Condition condition)
{
    std::vector<const LibraryRow *> found;
    for (const LibraryRow &row : libraryRows())
        if (condition(row))
            found.push_back(&row);
    return found;
}

static std::vector<std::string> namesOf(const std::vector<const LibraryRow *> &rows)
{
    std::vector<std::string> names;
    for (const LibraryRow *row : rows)
        names.push_back(row->declaration.name);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::vector<const LibraryRow *> libraryFunctions(const std::string &name)
{
    return chosen(
        [&](const LibraryRow &row) { return isFunction(row) && host::equalIgnoringCase(row.declaration.name, name); });
}

std::vector<const LibraryRow *> libraryMembers(const Type &object, const std::string &name)
{
    return chosen([&](const LibraryRow &row) {
        return host::equalIgnoringCase(row.declaration.name, name) && isMemberOf(row, object);
    });
}

std::vector<const LibraryRow *> librarySharedMembers(const std::string &owner, const std::string &name)
{
    return chosen([&](const LibraryRow &row) {
        return row.isShared && host::equalIgnoringCase(row.owner, owner) &&
               host::equalIgnoringCase(row.declaration.name, name);
    });
}

bool isLibraryOwner(const std::string &name)
{
    return std::any_of(libraryRows().begin(), libraryRows().end(),
                       [&](const LibraryRow &row) { return row.isShared && host::equalIgnoringCase(row.owner, name); });
}

std::vector<std::string> libraryFunctionNames()
{
    return namesOf(chosen(isFunction));
}

std::vector<std::string> libraryMemberNames(const Type &object)
{
    return namesOf(chosen([&](const LibraryRow &row) { return isMemberOf(row, object); }));
}

std::vector<std::string> librarySharedNames(const std::string &owner)
{
    return namesOf(
        chosen([&](const LibraryRow &row) { return row.isShared && host::equalIgnoringCase(row.owner, owner); }));
}

} // namespace script

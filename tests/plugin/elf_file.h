// What a loader reads of a 32-bit ELF file.
#pragma once

#include <string>
#include <vector>

struct ElfFile {
    explicit ElfFile(const std::string &path); // throws std::runtime_error when it is not one

    std::vector<std::string> exports;        // defined dynamic symbols
    std::vector<std::string> needed;         // in order
    std::vector<std::string> localFunctions; // of the full symbol table, where the file has one
    bool hasTextRelocations = false;
    bool hasExecutableStack = true; // without a word about it, it is
    bool hasFullSymbolTable = false;
};

// Text of the script language, places in it, and messages about them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace script {

struct Source {
    std::string name; // a file's path, as messages show it
    std::string text;
    size_t firstLine = 1; // as messages count
};

// A program's text as it lies in a file: without a byte order mark, every line ending in "\n" alone. Throws
// std::runtime_error for a text that is not UTF-8, with the name of its encoding where that can be told.
Source sourceOf(const std::string &name, const std::string &bytes);

// A piece of a source, which outlives it.
struct Place {
    const Source *source = nullptr;
    size_t offset = 0;
    size_t length = 0;
};

// From the start of one place to the end of another.
Place spanning(const Place &first, const Place &last);

// NAME:LINE:COLUMN: MESSAGE, then the line, then a caret below the place's first character and a line below the others.
// Columns count characters from 1.
std::string report(const Place &place, const std::string &message);

size_t lineOf(const Place &place);
// NAME:LINE:COLUMN
std::string nameOf(const Place &place);

// What is wrong with a program, found before anything of it is run.
struct Problem {
    Place place;
    std::string message;
    bool isIncomplete = false; // more lines could put it right
};

struct ProblemsFound : std::runtime_error {
    explicit ProblemsFound(std::vector<Problem> problems);
    std::vector<Problem> problems;
};

[[noreturn]] void fail(const Place &place, const std::string &message);

} // namespace script

// Text in characters, which are code points.
#pragma once

#include <string>
#include <vector>

namespace script {

std::vector<std::string> charactersOf(const std::string &utf8);

// As Cocoa has it: of every alphabet.
std::string uppercase(const std::string &utf8);
std::string lowercase(const std::string &utf8);
std::string titlecase(const std::string &utf8); // each word with a capital letter

// Below 0, 0 or above 0: the order of the language, which takes no notice of case.
int compareText(const std::string &a, const std::string &b);

// In lines of that many characters, which end with CR LF; in one where it is 0.
std::string base64Of(const std::string &bytes, size_t lineLength);
// Characters that do not belong to the alphabet are passed over.
std::string bytesOfBase64(const std::string &text);

} // namespace script

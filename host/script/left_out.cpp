#include "host/script/left_out.h"

#include <sstream>

#include "host/declaration.h"

namespace script {

const std::vector<LeftOut> &leftOut()
{
    using At = LeftOutAt;
    static const std::vector<LeftOut> rows = {
        {At::Statement, "Module Namespace", "modules", "Sub, Function, Const and Enum can stand alone"},
        {At::Statement, "Interface Implements", "interfaces", ""},
        {At::Statement, "Event Delegate RaiseEvent AddHandler RemoveHandler", "events and delegates", ""},
        {At::Statement, "Property", "computed properties", "a field is written Dim Name As Type"},
        {At::Statement, "Shared", "shared members of the program's own classes", ""},
        {At::Statement, "Static", "static variables", "a variable of the program keeps its value"},
        {At::Statement, "Structure", "structures", "a MemoryBlock keeps bytes at their places"},
        {At::Statement, "Declare Soft", "declarations of system functions", ""},
        {At::Statement, "GoTo", "jumps", ""},
        {At::Statement, "Exception", "exception blocks of a method", "write Try and Catch"},
        {At::Statement, "Using", "namespaces", ""},
        {At::Statement, "Var", "the words of later hosts", "write Dim"},
        {At::Parameter, "ParamArray", "parameters that take any number of arguments", "pass an array"},
        {At::Parameter, "Assigns", "methods of the program that are assigned to", ""},
        {At::Parameter, "Extends", "extension methods", ""},
        {At::Name, "Super", "calls of an inherited method by Super", ""},
        {At::Name, "AddressOf WeakAddressOf", "addresses of methods", ""},
        {At::Name, "Ptr CString WString PString CFStringRef OSType", "types of system functions", ""},
        {At::Name, "Pair Collection Timer Thread Mutex Semaphore WeakRef Random", "", ""},
        {At::Name, "TextInputStream TextOutputStream BinaryStream", "", ""},
        {At::Name, "XMLDocument XMLNode JSONItem RegEx Shell Picture Sound Clipboard", "", ""},
        {At::Name, "Encodings TextEncoding DefineEncoding ConvertEncoding Encoding", "encodings of texts",
         "texts are UTF-8 here"},
        {At::Name, "App Window Screen Introspection MessageDialog Xojo", "", ""},
        {At::Name, "Text DateTime", "the types of later hosts", "write String and Date"},
        {At::Name, "MessageBox", "the words of later hosts", "write MsgBox"},
        {At::Name, "CType", "", "write Integer(value)"},
        {At::Name, "ParseDate", "", "a Date takes SQLDate and SQLDateTime"},
        {At::Name, "HSV CMY", "", "write RGB(red, green, blue)"},
        {At::Name, "Input StdIn StdOut StdErr", "", "Print writes a line"},
        {At::Sign, "+= -= *= /=", "", "write n = n + 1"},
        {At::Sign, ":", "pairs, and several statements on a line,", ""},
    };
    return rows;
}

std::string leftOutMessage(const LeftOut &row, std::string_view word)
{
    std::string what = *row.what ? std::string(row.what) + " are" : "\"" + std::string(word) + "\" is";
    if (*row.what && what[0] >= 'a')
        what[0] = char(what[0] - 'a' + 'A');
    return what + " not part of this language here" + (*row.instead ? "; " + std::string(row.instead) : "");
}

std::string leftOutMessage(LeftOutAt at, std::string_view word)
{
    for (const LeftOut &row : leftOut()) {
        std::istringstream words(row.words);
        for (std::string each; row.at == at && words >> each;)
            if (host::equalIgnoringCase(each, word))
                return leftOutMessage(row, word);
    }
    return "";
}

} // namespace script

// plughost call METHOD [ARG...]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/text_value.h"
#include "host/script/host_members.h"

namespace plughost {

namespace {

struct Found {
    const host::MethodDescription *method = nullptr;
    bool isShared = false;
};

struct Call {
    std::string name;
    std::vector<std::string> arguments;
    std::string assigned;
    bool assigns = false;
    bool json = false;

    void run(Session &session) const
    {
        Found found = find(session.defaultsClass());
        std::vector<std::string> texts = arguments;
        std::vector<host::Parameter> parameters = found.method->declaration.parameters;
        if (assigns) {
            texts.push_back(assigned);
            parameters.push_back({"the assigned value", found.method->declaration.result});
        }
        host::Arguments values;
        for (size_t i = 0; i < texts.size(); i++)
            values.push_back(argument(parameters[i], texts[i]));
        finish(session, found, values);
    }

private:
    static std::string quoted(const std::string &text) { return "\"" + text + "\""; }

    bool isNamed(const host::MethodDescription &method) const
    {
        return host::equalIgnoringCase(method.declaration.name, name) || method.text == name;
    }

    bool fits(const host::MethodDescription &method) const
    {
        return method.declaration.parameters.size() == arguments.size() && (!assigns || method.setter);
    }

    // Methods first, then shared methods; among overloads the one that takes as many arguments.
    Found find(const host::ClassDescription &description) const
    {
        Found named;
        for (bool isShared : {false, true}) {
            for (const host::MethodDescription &method : isShared ? description.sharedMethods : description.methods) {
                if (!isNamed(method))
                    continue;
                named = {&method, isShared};
                if (fits(method))
                    return named;
            }
        }
        if (!named.method)
            throw InputError(description.name + " has no method " + quoted(name) +
                             script::suggestion(name, script::memberNames(description.name, false)));
        if (assigns && !named.method->setter)
            throw InputError(quoted(named.method->text) + " cannot be assigned to");
        size_t wanted = named.method->declaration.parameters.size();
        throw InputError(quoted(named.method->text) + " takes " + std::to_string(wanted) +
                         (wanted == 1 ? " argument, not " : " arguments, not ") + std::to_string(arguments.size()));
    }

    static host::Value argument(const host::Parameter &parameter, const std::string &text)
    {
        std::optional<ValueType::Kind> kind = kindOf(parameter.type);
        if (!kind)
            throw InputError(parameter.name + ": a value of type " + parameter.type.text() +
                             " cannot be written on a command line");
        return valueOfText(*kind, text, parameter.name);
    }

    void finish(Session &session, const Found &found, const host::Arguments &values) const
    {
        host::Value self = found.isShared ? host::Value() : session.defaults();
        host::Host &host = session.host();
        host::Outcome outcome =
            assigns ? host.invokeSetter(*found.method, self, values) : host.invoke(*found.method, self, values);
        if (!outcome.raised.empty())
            throw host::Exception(outcome.raised);
        session.save();
        if (!assigns && found.method->declaration.result.passing != host::Passing::Nothing)
            puts((json ? jsonOf(outcome.result) : textOfValue(outcome.result)).c_str());
    }
};

} // namespace

void addCall(Program &program)
{
    CLI::App *command = program.add("call", "Call any method of the class and print its result");
    auto call = std::make_shared<Call>();
    addPlainArgument(command, "METHOD", call->name, "A method's name, or its declaration")->required();
    // One option for each, because the library would split "[a,b]" in an option that takes several.
    for (const char *name : {"ARG1", "ARG2", "ARG3", "ARG4"}) {
        auto take = [call](const std::string &text) { call->arguments.push_back(text); };
        addPlainArgument(command, name, take, "An argument, written as for plughost set");
    }
    auto takeAssigned = [call](const std::string &text) {
        call->assigned = text;
        call->assigns = true;
    };
    addPlainArgument(command, "--assign", takeAssigned, "Assign to the method: object.METHOD(ARG...) = VALUE")
        ->type_name("VALUE");
    command->add_flag("--json", call->json, "Print the result as JSON");
    command->footer("Methods are called on the standard defaults object, or on that of --user; shared methods on the "
                    "class.\n"
                    "What the class does not store is not refused here: a text that is no URL, nil, data of no bytes "
                    "remove the value.\n\nExamples:\n"
                    "  plughost call persistentDomainNames\n"
                    "  plughost call integerForKey Runs --assign 5\n"
                    "  plughost call setPersistentDomain '{\"a\": 1}' com.example.other");
    program.onSession(command, [call](Session &session) { call->run(session); });
}

} // namespace plughost

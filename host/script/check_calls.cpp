// Which method a call means, and whether its arguments fit.
#include <algorithm>

#include "host/script/checker.h"

namespace script {

// "1 argument", "1 to 3 arguments", "2 or more arguments"
static std::string countText(size_t least, size_t most, bool repeats)
{
    std::string count = repeats         ? std::to_string(least) + " or more"
                        : least == most ? least == 0 ? "no" : std::to_string(least)
                                        : std::to_string(least) + " to " + std::to_string(most);
    return count + (count == "1" ? " argument" : " arguments");
}

Checker::Candidate Checker::candidateFor(const Function &function)
{
    if (function.isMistaken)
        throw ProblemsFound({});
    Candidate candidate{{}, function.result, function.declaration()};
    for (const Function::Parameter &parameter : function.parameters) {
        if (parameter.isByRef)
            candidate.byRef.push_back(candidate.parameters.size());
        candidate.parameters.push_back({parameter.variable.name.text, parameter.variable.type});
        candidate.required += !parameter.isOptional;
    }
    candidate.function = &function;
    return candidate;
}

Checker::Candidate Checker::candidateFor(const host::MethodDescription &method)
{
    const host::Declaration &declaration = method.declaration;
    Candidate candidate{declaration.parameters, declaration.result, method.text, declaration.parameters.size()};
    candidate.method = &method;
    return candidate;
}

Checker::Candidate Checker::candidateFor(const LibraryRow &row, bool isMember, bool isAssigned)
{
    Candidate candidate{
        row.declaration.parameters, row.declaration.result, row.text, row.required, row.repeats, row.byRef};
    if (isMember && row.isExtension) { // the object is the first one
        candidate.parameters.erase(candidate.parameters.begin());
        candidate.required--;
    }
    if (isAssigned) {
        candidate.parameters.push_back({"value", row.declaration.result});
        candidate.required++;
        candidate.result = nothing();
    }
    candidate.row = &row;
    return candidate;
}

std::vector<Checker::Candidate> Checker::libraryCandidates(const std::vector<const LibraryRow *> &rows, bool isMember,
                                                           Expression *assigned)
{
    std::vector<Candidate> candidates;
    for (const LibraryRow *row : rows)
        if (!assigned || row->assign)
            candidates.push_back(candidateFor(*row, isMember, assigned != nullptr));
    return candidates;
}

// How well an argument fits; an Array(…) takes the type that is wanted of it.
int Checker::fitOf(const Expression &expression, const Type &declared)
{
    auto *array = std::get_if<ArrayLiteral>(&expression.node);
    if (!array || !declared.isArray)
        return fit(declared, expression.type);
    int least = 2;
    for (const ExpressionPtr &element : array->elements)
        least = std::min(least, fitOf(*element, elementOf(declared)));
    return least;
}

const Checker::Candidate &Checker::choose(const std::vector<Candidate> &candidates, const Expressions &arguments,
                                          Expression *assigned, const Named &name)
{
    std::vector<Expression *> all;
    for (const ExpressionPtr &argument : arguments)
        all.push_back(argument.get());
    if (assigned)
        all.push_back(assigned);
    for (Expression *argument : all)
        check(*argument);

    const Candidate *best = nullptr;
    const Candidate *ofThatLength = nullptr;
    int bestSum = -1;
    for (const Candidate &candidate : candidates) {
        if (!candidate.takes(all.size()))
            continue;
        if (!ofThatLength)
            ofThatLength = &candidate;
        int sum = 0;
        bool fits = true;
        for (size_t i = 0; i < all.size(); i++) {
            int one = fitOf(*all[i], candidate.parameter(i).type);
            fits = fits && one;
            sum += one;
        }
        if (fits && sum > bestSum) {
            best = &candidate;
            bestSum = sum;
        }
    }
    if (best)
        return *best;
    const Candidate &nearest = ofThatLength ? *ofThatLength : candidates.front();
    if (!ofThatLength) {
        size_t value = assigned ? 1 : 0;
        fail(name.place, nearest.text + ": takes " +
                             countText(nearest.required - value, nearest.parameters.size() - value, nearest.repeats) +
                             ", not " + std::to_string(arguments.size()));
    }
    return nearest; // the caller finds the argument that does not fit
}

// What is passed ByRef is a variable of the very type, or an element of an array of it.
void Checker::needVariable(Expression &argument, const host::Parameter &parameter, const std::string &text)
{
    auto *use = std::get_if<Use>(&argument.node);
    if (!use || use->meaning != Meaning::Variable || argument.type != parameter.type)
        fail(argument.place, text + ": " + parameter.name + " is passed ByRef and must be a variable that is " +
                                 articleAndName(parameter.type));
}

Type Checker::call(Use &use, Meaning meaning, const std::vector<Candidate> &candidates, Expression *assigned)
{
    bool takesAssignment = meaning == Meaning::HostCall || meaning == Meaning::LibraryCall;
    if (assigned && !takesAssignment)
        fail(use.name.place, candidates.front().text + ": cannot be assigned to");
    const Candidate &chosen = choose(candidates, use.arguments, assigned, use.name);
    size_t count = use.arguments.size() + (assigned ? 1 : 0);
    for (size_t i = 0; i < count; i++) {
        bool isAssigned = assigned && i + 1 == count;
        Expression &argument = isAssigned ? *assigned : *use.arguments[i];
        std::string what = isAssigned ? "the assigned value" : chosen.parameter(i).name;
        need(argument, chosen.parameter(i).type, chosen.text + ": " + what);
    }
    for (size_t i : chosen.byRef)
        if (i < use.arguments.size())
            needVariable(*use.arguments[i], chosen.parameters[i], chosen.text);
    use.meaning = meaning;
    use.method = chosen.method;
    use.function = chosen.function;
    use.row = chosen.row;
    use.usesSetter = chosen.usesSetter;
    use.type = chosen.result;
    return chosen.result;
}

} // namespace script

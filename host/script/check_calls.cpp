// Which method a call means, and whether its arguments fit.
#include <algorithm>

#include "host/script/checker.h"

namespace script {

static std::string countText(size_t count)
{
    return count == 0 ? "no arguments" : count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

Checker::Candidate Checker::candidateFor(const Function &function)
{
    Candidate candidate{function.name.text, {}, function.result, function.declaration(), nullptr, &function};
    for (const Function::Parameter &parameter : function.parameters)
        candidate.parameters.push_back({parameter.variable.name.text, parameter.variable.type});
    return candidate;
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
        if (candidate.parameters.size() != all.size())
            continue;
        if (!ofThatLength)
            ofThatLength = &candidate;
        int sum = 0;
        bool fits = true;
        for (size_t i = 0; i < all.size(); i++) {
            int one = fitOf(*all[i], candidate.parameters[i].type);
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
        size_t taken = nearest.parameters.size() - (assigned ? 1 : 0);
        fail(name.place, nearest.text + ": takes " + countText(taken) + ", not " + std::to_string(arguments.size()));
    }
    return nearest; // the caller finds the argument that does not fit
}

Type Checker::call(Use &use, Meaning meaning, const std::vector<Candidate> &candidates, Expression *assigned)
{
    bool takesAssignment = meaning == Meaning::HostCall;
    if (assigned && !takesAssignment)
        fail(use.name.place, candidates.front().text + ": cannot be assigned to");
    const Candidate &chosen = choose(candidates, use.arguments, assigned, use.name);
    for (size_t i = 0; i < chosen.parameters.size(); i++) {
        bool isAssigned = assigned && i + 1 == chosen.parameters.size();
        Expression &argument = isAssigned ? *assigned : *use.arguments[i];
        std::string what = isAssigned ? "the assigned value" : chosen.parameters[i].name;
        need(argument, chosen.parameters[i].type, chosen.text + ": " + what);
    }
    use.meaning = meaning;
    use.method = chosen.method;
    use.function = chosen.function;
    use.builtin = chosen.builtin;
    use.usesSetter = chosen.usesSetter;
    use.type = chosen.result;
    return chosen.result;
}

} // namespace script

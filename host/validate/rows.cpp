#include "host/validate/rows.h"

#include "host/validate/case.h"
#include "host/validate/rows/tables.h"

namespace validate {

// The same setters as host code reaches them by an assignment to the getter.
static void addAssignments(std::vector<Row> &rows)
{
    static const char *const pairs[][2] = {
        {"integerForKey(key as string) as integer", "setIntegerValue"},
        {"floatForKey(key as string) as single", "setFloatValue"},
        {"doubleForKey(key as string) as double", "setDoubleValue"},
        {"boolForKey(key as string) as boolean", "setBoolValue"},
        {"stringForKey(key as string) as string", "setStringValue"},
        {"dataForKey(key as string) as memoryblock", "setDataValue"},
        {"variantForKey(key as string) as variant", "setVariantValue-int32"},
        {"fileForKey(key as string) as folderitem", "setFileValue"},
        {"URLForKey(key as string) as string", "setURLValue"},
        {"dictionaryForKey(key as string) as dictionary", "setDictionaryValue"},
    };
    for (const auto &[declaration, setterName] : pairs)
        for (size_t i = 0, count = rows.size(); i < count; i++)
            if (rows[i].name == setterName) {
                Row row = rows[i];
                row.declaration = declaration;
                row.isAssigned = true;
                row.name = row.declaration.substr(0, row.declaration.find('(')) + "-assigned";
                rows.push_back(row);
            }
}

const std::vector<Row> &rows()
{
    static const std::vector<Row> *all = [] {
        auto *made = new std::vector<Row>;
        for (Rows (*table)() : {lifecycleRows, scalarRows, textRows, dataRows, collectionRows, variantGetterRows,
                                variantSetterRows, domainRows})
            for (Row &row : table())
                made->push_back(std::move(row));
        addAssignments(*made);
        return made;
    }();
    return *all;
}

const Row &rowNamed(const std::string &name)
{
    for (const Row &row : rows())
        if (row.name == name)
            return row;
    throw Failure("there is no row " + name);
}

} // namespace validate

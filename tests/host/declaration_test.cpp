#include "host/declaration.h"

#include <gtest/gtest.h>

namespace {

using host::Declaration;
using host::DeclarationError;
using host::parseDeclaration;
using host::Passing;

TEST(Declaration, NameAloneIsAMethodWithoutResult)
{
    Declaration declaration = parseDeclaration("Constructor");
    EXPECT_EQ(declaration.name, "Constructor");
    EXPECT_TRUE(declaration.parameters.empty());
    EXPECT_EQ(declaration.result.passing, Passing::Nothing);
}

TEST(Declaration, ResultWithoutBrackets)
{
    Declaration declaration = parseDeclaration("_exception as NSExceptionKTZ");
    EXPECT_EQ(declaration.name, "_exception");
    EXPECT_EQ(declaration.result.passing, Passing::Object);
    EXPECT_EQ(declaration.result.name, "NSExceptionKTZ");
}

TEST(Declaration, ParametersAndResult)
{
    Declaration declaration = parseDeclaration("objectIsForcedForKey(key as string, domain as string) as boolean");
    ASSERT_EQ(declaration.parameters.size(), 2u);
    EXPECT_EQ(declaration.parameters[1].name, "domain");
    EXPECT_EQ(declaration.parameters[1].type.passing, Passing::String);
    EXPECT_EQ(declaration.result.passing, Passing::Boolean);
    EXPECT_FALSE(declaration.assigns);
}

TEST(Declaration, ArraysAsParametersAndResults)
{
    Declaration taking = parseDeclaration("setArrayValue(key as string, values() as variant)");
    EXPECT_TRUE(taking.parameters[1].type.isArray);
    EXPECT_EQ(taking.parameters[1].type.passing, Passing::Variant);
    Declaration giving = parseDeclaration("persistentDomainNames as string()");
    EXPECT_TRUE(giving.result.isArray);
    EXPECT_EQ(giving.result.passing, Passing::String);
}

TEST(Declaration, AssignedValueIsTheLastParameter)
{
    Declaration declaration = parseDeclaration("Value(key As Variant, Assigns _value As Variant)");
    EXPECT_TRUE(declaration.assigns);
    ASSERT_EQ(declaration.parameters.size(), 2u);
    EXPECT_EQ(declaration.parameters[1].name, "_value");
}

TEST(Declaration, BlanksAndCaseDoNotCount)
{
    Declaration spaced = parseDeclaration("LenB( s as string ) as integer");
    EXPECT_TRUE(spaced.matches(parseDeclaration("LENB(text As String) As Int32")));
}

TEST(Declaration, OtherTypesOrAssignsAreOtherMethods)
{
    Declaration getter = parseDeclaration("Value(key As Variant) As Variant");
    EXPECT_FALSE(getter.matches(parseDeclaration("Value(key As String) As Variant")));
    EXPECT_FALSE(getter.matches(parseDeclaration("Value(Assigns key As Variant) As Variant")));
    EXPECT_FALSE(getter.matches(parseDeclaration("Value(key As Variant) As String")));
    EXPECT_FALSE(getter.matches(parseDeclaration("Value(key() As Variant) As Variant")));
}

TEST(Declaration, EveryTypeNameHasItsPassing)
{
    const std::pair<const char *, Passing> types[] = {
        {"Integer", Passing::Int32},   {"UInt32", Passing::UInt32}, {"int64", Passing::Int64},
        {"UInt64", Passing::UInt64},   {"byte", Passing::UInt8},    {"Int16", Passing::Int16},
        {"single", Passing::Single},   {"Double", Passing::Double}, {"Currency", Passing::Currency},
        {"Boolean", Passing::Boolean}, {"Color", Passing::Color},   {"String", Passing::String},
        {"Variant", Passing::Variant}, {"Ptr", Passing::Pointer},   {"FolderItem", Passing::Object},
    };
    for (const auto &[name, passing] : types)
        EXPECT_EQ(host::declaredType(name).passing, passing) << name;
}

TEST(Declaration, TextIsOneSpelling)
{
    EXPECT_EQ(parseDeclaration("Value( key As Variant,Assigns  _value As Variant )").text(),
              "Value(key as variant, assigns _value as variant)");
    EXPECT_EQ(parseDeclaration("names() As String()").text(), "names as string()");
}

TEST(Declaration, ErrorsNameThePlaceAndWhatIsMissing)
{
    const std::pair<const char *, const char *> broken[] = {
        {"", "character 1: the name of a method expected before the end"},
        {"a(b)", "character 4: \"As\" expected"},
        {"a(b as)", "character 7: the type of a parameter expected"},
        {"a(b as string", "character 14: \")\" expected before the end"},
        {"a as string b", "character 13: the end expected"},
        {"a(Assigns b as string, c as string)", "character 23: \")\" behind the assigned value expected"},
    };
    for (const auto &[text, message] : broken) {
        try {
            parseDeclaration(text);
            ADD_FAILURE() << text << " was accepted";
        } catch (const DeclarationError &error) {
            EXPECT_EQ(error.what(), "\"" + std::string(text) + "\", " + message);
        }
    }
}

} // namespace

// plughost tour [PART]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/transcript.h"

namespace plughost {

namespace {

// One walk through the class. Domain names stand in the text, so the tour has its own application.
const char kDomain[] = "Tour";

struct Tour {
    Session &session;
    Transcript out;
    Term d;

    explicit Tour(Session &session) : session(session), out(session.host()), d("d", session.defaults()) {}

    void defaultsObject()
    {
        out.heading("The defaults object");
        out.dimShared("d", kClassName, kClassName, "standardUserDefaults");
        out.showSame(d, kClassName, "standardUserDefaults");
        out.showRaised(d, "Constructor", {},
                       "UnsupportedOperationException: Constructor called too often. Object is already initialized.");
        out.showShared(kClassName, "NSGlobalDomain", "\"NSGlobalDomain\"");
        out.showShared(kClassName, "NSArgumentDomain", "\"NSArgumentDomain\"");
        out.showShared(kClassName, "NSRegistrationDomain", "\"NSRegistrationDomain\"");
        out.showShared(kClassName, "NSUserDefaultsDidChangeNotification", "\"NSUserDefaultsDidChangeNotification\"");
    }

    void numbers()
    {
        out.heading("Numbers and booleans");
        out.assign(d, "integerForKey", {"Runs"}, 5);
        out.assign(d, "integerForKey", {"Lowest"}, -2147483647 - 1);
        out.show(d, "integerForKey", {"Runs"}, "5");
        out.show(d, "integerForKey", {"Lowest"}, "-2147483648");
        out.show(d, "integerForKey", {"Missing"}, "0");
        out.assign(d, "floatForKey", {"Zoom"}, single(1.5f));
        out.run(d, "setFloatValue", {"Gain", single(0.1f)});
        out.show(d, "floatForKey", {"Zoom"}, "1.5");
        out.show(d, "floatForKey", {"Gain"}, "0.1");
        out.assign(d, "doubleForKey", {"Latitude"}, 52.520008);
        out.run(d, "setDoubleValue", {"Tiny", 1e-300});
        out.show(d, "doubleForKey", {"Latitude"}, "52.520008");
        out.show(d, "doubleForKey", {"Tiny"}, "1e-300");
        out.assign(d, "boolForKey", {"Sound"}, true);
        out.run(d, "setBoolValue", {"Hints", false});
        out.show(d, "boolForKey", {"Sound"}, "True");
        out.show(d, "boolForKey", {"Hints"}, "False");
    }

    void text()
    {
        out.heading("Text and URLs");
        out.assign(d, "stringForKey", {"Title"}, "Says \"hello\"");
        out.run(d, "setStringValue", {"City", "Zürich"});
        out.show(d, "stringForKey", {"Title"}, "\"Says \"\"hello\"\"\"");
        out.show(d, "stringForKey", {"City"}, "\"Zürich\"");
        out.assign(d, "URLForKey", {"Home"}, "http://example.com/a?b=c");
        out.run(d, "setURLValue", {"Mail", "mailto:ada@example.com"});
        out.show(d, "URLForKey", {"Home"}, "\"http://example.com/a?b=c\"");
        out.show(d, "URLForKey", {"Mail"}, "\"mailto:ada@example.com\"");
        out.run(d, "removeObjectForKey", {"Mail"});
        out.show(d, "URLForKey", {"Mail"}, "\"\"");
    }

    void roundTrip()
    {
        out.heading("The same database, seen by the system's defaults tool");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Runs", "Tour Runs 5");
        out.command("defaults read Tour City", "Tour City Zürich");
        out.command("defaults read Tour Zoom", "Tour Zoom 1.5");
        out.command("defaults write Tour Visitor 'Ada Lovelace'", "");
        out.show(d, "synchronize", {}, "True");
        out.show(d, "stringForKey", {"Visitor"}, "\"Ada Lovelace\"");
        out.assign(d, "stringForKey", {"Greeting"}, "grüß dich 👋");
        out.show(d, "synchronize", {}, "True");
        out.show(d, "stringForKey", {"Greeting"}, "\"grüß dich 👋\"");
        out.command("defaults read Tour Greeting", "Tour Greeting 'grüß dich 👋'");
    }

    void window()
    {
        out.heading("A window's settings in a Dictionary");
        Term w = out.dimDictionary("w");
        out.put(w, "title", "Main");
        out.put(w, "frame", array({40, 60, 800, 600}));
        out.put(w, "open", true);
        out.assign(d, "dictionaryForKey", {"Window"}, w);
        out.show(d, "dictionaryForKey", {"Window"}, R"({"frame":[40,60,800,600],"open":true,"title":"Main"})");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Window", "Tour Window '{\n    frame = (\n\t40,\n\t60,\n\t800,\n\t600\n    );\n"
                                                 "    open = 1;\n    title = Main;\n}'");
    }

    void memoryBlock()
    {
        out.heading("Bytes in a MemoryBlock");
        Term m = out.dimMemoryBlock("m", std::string("\x00\xff\x10", 3));
        out.assign(d, "dataForKey", {"Signature"}, m);
        out.show(d, "dataForKey", {"Signature"}, "MemoryBlock 00ff10");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Signature", "Tour Signature <00ff10>");
    }

    void file()
    {
        out.heading("A file");
        out.assign(d, "fileForKey", {"Log"}, folderItem("/etc/hosts"));
        out.show(d, "fileForKey", {"Log"}, "FolderItem /etc/hosts");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Log", "Tour Log /etc/hosts");
    }

    void arrays()
    {
        out.heading("Arrays");
        out.run(d, "setStringArrayValue", {"Recent", stringArray({"one.txt", "two words.txt"})});
        out.show(d, "stringArrayForKey", {"Recent"}, R"(["one.txt","two words.txt"])");
        Term noon = out.dimDate("noon", 2012, 2, 29, 12, 0, 0);
        out.run(d, "setArrayValue", {"Mixed", array({1, 0.5, "text", true, noon})});
        out.show(d, "arrayForKey", {"Mixed"}, R"([1,0.5,"text",true,{"$date":"2012-02-29T12:00:00"}])");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Recent", "Tour Recent '(\n    \"one.txt\",\n    \"two words.txt\"\n)'");
    }

    void variants()
    {
        out.heading("Any value as a Variant");
        Term noon = out.dimDate("noon", 2012, 2, 29, 12, 0, 0);
        out.assign(d, "variantForKey", {"LastRun"}, noon);
        out.show(d, "variantForKey", {"LastRun"}, "Date 2012-02-29T12:00:00");
        out.assign(d, "variantForKey", {"Choice"}, 7);
        out.show(d, "variantForKey", {"Choice"}, "7");
        out.show(d, "variantForKey", {"Missing"}, "Nil");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour LastRun", "Tour LastRun '2012-02-29 12:00:00 +0000'");
        out.command("defaults read Tour Choice", "Tour Choice 7");
    }

    void suites()
    {
        out.heading("A suite: values that several applications share");
        Term s = out.dimDictionary("s");
        out.put(s, "Theme", "dark");
        out.run(d, "setPersistentDomain", {s, "TourSuite"});
        out.show(d, "stringForKey", {"Theme"}, "\"\"");
        out.run(d, "addSuiteNamed", {"TourSuite"});
        out.show(d, "stringForKey", {"Theme"}, "\"dark\"");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read TourSuite Theme", "TourSuite Theme dark");
        out.run(d, "removeSuiteNamed", {"TourSuite"});
        out.show(d, "stringForKey", {"Theme"}, "\"\"");
    }

    void registered()
    {
        out.heading("Registered defaults: used until something is stored, never written");
        Term r = out.dimDictionary("r");
        out.put(r, "Columns", 80);
        out.run(d, "registerDefaults", {r});
        out.show(d, "integerForKey", {"Columns"}, "80");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Columns", "defaults read: couldn't read default");
        out.assign(d, "integerForKey", {"Columns"}, 132);
        out.show(d, "integerForKey", {"Columns"}, "132");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read Tour Columns", "Tour Columns 132");
    }

    void volatileDomain()
    {
        out.heading("A volatile domain: gone when the program ends");
        Term v = out.dimDictionary("v");
        out.put(v, "Started", "just now");
        out.run(d, "setVolatileDomain", {v, "TourSession"});
        out.show(d, "volatileDomainForName", {"TourSession"}, R"({"Started":"just now"})");
        out.show(d, "synchronize", {}, "True");
        out.command("defaults read TourSession", "");
        out.run(d, "removeVolatileDomainForName", {"TourSession"});
        out.show(d, "volatileDomainForName", {"TourSession"}, "Nil");
    }

    void dump()
    {
        out.heading("Everything at once");
        Term own = out.dim("own", "Dictionary", d, "persistentDomainForName", {kDomain});
        out.fact("own.Count = 8", own.value.count() == 8);
        out.command("defaults read Tour | grep -c '^Tour '", "8");
        out.fact("own.HasKey(\"Window\")", own.value.hasKey("Window"));
        out.fact("own.HasKey(\"TourSession\")", own.value.hasKey("TourSession"), false);
        Term all = out.dim("all", "Dictionary", d, "dictionaryRepresentation");
        out.remark("every domain of the search list in one Dictionary");
        out.fact("all.Count > own.Count", all.value.count() > own.value.count());
        for (int32_t i = 0; i < own.value.count(); i++)
            sameInBoth(own.value.keyAt(i).text(), own.value, all.value);
    }

    void sameInBoth(const std::string &key, const host::Value &own, const host::Value &all)
    {
        std::string lookup = ".Value(\"" + key + "\")";
        out.fact("all" + lookup + " = own" + lookup, jsonOf(all.lookup(key)) == jsonOf(own.lookup(key)));
    }

    void basics()
    {
        defaultsObject();
        numbers();
        text();
        roundTrip();
    }

    void values()
    {
        window();
        memoryBlock();
        file();
        arrays();
        variants();
        suites();
        registered();
        volatileDomain();
        dump();
    }
};

void runTour(Session &session, const std::string &part)
{
    printf("A host that reports version %s\n", session.host().profile().name.c_str());
    Tour tour(session);
    part == "basics" ? tour.basics() : tour.values();
    if (int failures = tour.out.failures())
        throw InputError("lines of the tour that are not as expected: " + std::to_string(failures));
}

} // namespace

void addTour(Program &program)
{
    CLI::App *command =
        program.add("tour", "Walk through the class and check every result, also with the defaults tool");
    auto part = std::make_shared<std::string>();
    command->add_option("PART", *part, "basics (numbers and text) or values (everything else)")
        ->required()
        ->check(CLI::IsMember({"basics", "values"}));
    command->footer("Needs --defaults-dir: the tour starts in an empty folder and fills it.");
    command->callback([&program, part] {
        program.options.domain = kDomain;
        program.chosen = [&program, part] {
            if (program.options.defaultsDir.empty())
                throw UsageError("tour: needs --defaults-dir DIR, an empty folder that it may fill");
            return runInSession(program.options, [part](Session &session) { runTour(session, *part); });
        };
    });
}

} // namespace plughost

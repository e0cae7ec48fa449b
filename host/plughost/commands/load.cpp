// plughost load FILE [--into DOMAIN]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/storable.h"

namespace plughost {

namespace {

struct Load {
    std::string file;
    std::string domain;
    bool intoDomain = false;

    void run(Session &session) const
    {
        host::Value values = dictionaryOfJson(readFile(file), nameOfFile(file));
        int32_t stored = intoDomain ? storeDomain(session, values) : storeDifferences(session, values);
        session.save();
        printf("%d of %d values stored\n", int(stored), int(values.count()));
    }

private:
    int32_t storeDomain(Session &session, const host::Value &values) const
    {
        requireStorable(values, nameOfFile(file));
        session.call("setPersistentDomain", {values, domain});
        return values.count();
    }

    // A dump holds what the system provides, too, and that is not to become the application's own: values that read the
    // same already, and those of GNUstep's configuration, which a dump made elsewhere has otherwise (paths).
    int32_t storeDifferences(Session &session, const host::Value &values) const
    {
        host::Value configuration = session.call("volatileDomainForName", {"GSConfigDomain"});
        host::Arguments differences; // a key, a value, a key, ...
        for (int32_t i = 0; i < values.count(); i++) {
            host::Value key = values.keyAt(i);
            if (!key.isString())
                throw InputError("the key " + jsonOf(key) + " is no text");
            host::Value value = values.lookup(key);
            if (!configuration.isNil() && configuration.hasKey(key))
                continue;
            if (jsonOf(value) == jsonOf(session.call("variantForKey", {key})))
                continue;
            requireStorable(value, nameOfFile(file) + ": /" + key.text());
            differences.insert(differences.end(), {key, value});
        }
        for (size_t i = 0; i < differences.size(); i += 2)
            session.call("setVariantValue", {differences[i], differences[i + 1]});
        return int32_t(differences.size() / 2);
    }
};

} // namespace

void addLoad(Program &program)
{
    CLI::App *command = program.add("load", "Store the values of a JSON file, such as plughost dump prints");
    auto load = std::make_shared<Load>();
    addPlainArgument(command, "FILE", load->file, "The file; - is standard input")->required();
    CLI::Option *into = command->add_option("--into", load->domain, "Make the file the whole of this persistent domain")
                            ->type_name("DOMAIN");
    command->footer("Without --into, values that differ from what their keys give now are stored in the application's\n"
                    "domain. Nothing is stored when any value cannot be; null, data of no bytes and the\n"
                    "like, which would remove values, are refused where there is a value.");
    program.onSession(command, [=](Session &session) {
        load->intoDomain = into->count() > 0;
        load->run(session);
    });
}

} // namespace plughost

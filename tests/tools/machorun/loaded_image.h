// The test library, loaded at each level of optimisation and by each encoding of its fix-ups.
#pragma once

#include "tools/machorun/machorun.h"

#include <gtest/gtest.h>
#include <string>

std::string imagePath(const std::string &name); // the file of that name, without ".dylib"

struct ImageVariant {
    const char *level;
    machorun::Fixups fixups;
};

std::string nameOf(const ImageVariant &variant); // "O2Classic"
void PrintTo(const ImageVariant &variant, std::ostream *stream);

class LoadedImage : public ::testing::TestWithParam<ImageVariant> {
protected:
    LoadedImage() { load({}); }
    explicit LoadedImage(const machorun::Options &options) { load(options); }

    // The exported function of that name.
    template <class Function>
    Function *function(const char *name)
    {
        std::string error;
        void *found = machorun::FindExport(library, name, error);
        if (!found) {
            ADD_FAILURE() << error;
            abort();
        }
        return reinterpret_cast<Function *>(found);
    }

    // Calls it, its result being of the type given and the arguments as they are.
    template <class Result, class... Arguments>
    Result call(const char *name, Arguments... arguments)
    {
        return function<Result(Arguments...)>(name)(arguments...);
    }

private:
    // For the life of the test; before all else, since objects are autoreleased while it is made.
    class Pool {
    public:
        Pool();
        ~Pool();
        Pool(const Pool &) = delete;
        Pool &operator=(const Pool &) = delete;

    private:
        void *_pool;
    };
    Pool pool;

protected:
    void *library = nullptr;

private:
    void load(machorun::Options options);
};

#define INSTANTIATE_FOR_EVERY_IMAGE(suite)                                                                             \
    INSTANTIATE_TEST_SUITE_P(Image, suite, ::testing::ValuesIn(everyImage()),                                          \
                             [](const auto &test) { return nameOf(test.param); })

std::vector<ImageVariant> everyImage();

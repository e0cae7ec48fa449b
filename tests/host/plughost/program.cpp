#include "tests/host/plughost/program.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ground.h"
#include "tests/support/plugin_under_test.h"

namespace plughost_test {

static std::string contentOf(FILE *file)
{
    std::string content;
    char buffer[4096];
    rewind(file);
    while (size_t length = fread(buffer, 1, sizeof buffer, file))
        content.append(buffer, length);
    fclose(file);
    return content;
}

static Result run(Words words, const std::string &input)
{
    FILE *in = tmpfile();
    FILE *out = tmpfile();
    FILE *err = tmpfile();
    fwrite(input.data(), 1, input.size(), in);
    rewind(in);

    pid_t child = fork();
    if (child == 0) {
        std::vector<char *> arguments;
        for (std::string &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        dup2(fileno(in), 0);
        dup2(fileno(out), 1);
        dup2(fileno(err), 2);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    fclose(in);
    Result result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.output = contentOf(out);
    result.errors = contentOf(err);
    return result;
}

Result plughostWith(const std::string &plugin, const Words &arguments, const std::string &input)
{
    return run(Words{std::string(kBuildDir) + "/plughost", "--plugin", plugin} + arguments, input);
}

Result plughost(const Words &arguments, const std::string &input)
{
    return plughostWith(support::pluginUnderTest(), arguments, input);
}

Result defaultsTool(const Words &arguments)
{
    return run(Words{kDefaultsTool} + arguments, "");
}

Result shell(const std::string &line)
{
    return run({"/bin/sh", "-c", line}, "");
}

std::string printed(const Words &arguments)
{
    Result result = plughost(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    if (!result.output.empty() && result.output.back() == '\n')
        result.output.pop_back();
    return result.output;
}

// Removed when the test's process ends.
static const std::filesystem::path &folder()
{
    static struct Folder {
        std::filesystem::path path;
        Folder()
        {
            char name[] = "/tmp/plughost-test-XXXXXX";
            path = mkdtemp(name);
        }
        ~Folder() { std::filesystem::remove_all(path); }
    } folder;
    return folder.path;
}

std::string temporaryFile(const std::string &name, const std::string &content)
{
    std::filesystem::path path = folder() / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string temporaryFolder(const std::string &name)
{
    std::filesystem::create_directories(folder() / name);
    return folder() / name;
}

Words operator+(Words words, const Words &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

} // namespace plughost_test

#include "tests/host/plughost/program.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ground.h"
#include "host/plughost/application.h"
#include "host/plughost/plughost.h"
#include "tests/support/loaded_ahead.h"
#include "tests/support/plugin_under_test.h"

namespace plughost_test {

static const std::string kPlughost = std::string(kBuildDir) + "/plughost";

void startApplication()
{
    plughost::becomeApplication("plughost", false);
    support::loadFilesAhead();
}

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

// Runs in the child; what it answers is the child's exit status.
using Body = std::function<int(int count, char **arguments)>;

static Result run(Words words, const std::string &input, const Body &body)
{
    FILE *in = tmpfile();
    FILE *out = tmpfile();
    FILE *err = tmpfile();
    fwrite(input.data(), 1, input.size(), in);
    rewind(in);

    fflush(nullptr); // or the child writes it, too
    pid_t child = fork();
    if (child == 0) {
        std::vector<char *> arguments;
        for (std::string &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        dup2(fileno(in), 0);
        dup2(fileno(out), 1);
        dup2(fileno(err), 2);
        exit(body(int(words.size()), arguments.data()));
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

static int execute(int, char **arguments)
{
    execv(arguments[0], arguments);
    _exit(127);
}

// Foundation knows the folder of the defaults and the application's name from the start on.
static bool mustStart(const Words &arguments)
{
    static const Words known = {"--defaults-dir", "--domain"};
    return std::find_first_of(arguments.begin(), arguments.end(), known.begin(), known.end()) != arguments.end();
}

static int runPlughost(int count, char **arguments)
{
    return plughost::run(kBuildDir, count, arguments);
}

Result startedPlughost(const Words &arguments, const std::string &input)
{
    return run(Words{kPlughost, "--plugin", support::pluginUnderTest()} + arguments, input, execute);
}

Result plughostWith(const std::string &plugin, const Words &arguments, const std::string &input)
{
    bool starts = getenv("TESTS_ISOLATED") || mustStart(arguments);
    return run(Words{kPlughost, "--plugin", plugin} + arguments, input, starts ? execute : runPlughost);
}

Result plughost(const Words &arguments, const std::string &input)
{
    return plughostWith(support::pluginUnderTest(), arguments, input);
}

Result defaultsTool(const Words &arguments)
{
    return run(Words{kDefaultsTool} + arguments, "", execute);
}

Result shell(const std::string &line)
{
    return run({"/bin/sh", "-c", line}, "", execute);
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

// Removed when the test's process ends; the commands that it runs are forks of it.
static const std::filesystem::path &folder()
{
    static struct Folder {
        std::filesystem::path path;
        pid_t owner = getpid();
        Folder()
        {
            char name[] = "/tmp/plughost-test-XXXXXX";
            path = mkdtemp(name);
        }
        ~Folder()
        {
            if (getpid() == owner)
                std::filesystem::remove_all(path);
        }
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

// The main function of every test program: each selected case runs in a child process of its own, a fork of one that
// has started what the cases need. What a case prints is shown when it fails.
#pragma once

namespace test_runner {

// `start` is called once, in the parent, when cases will be forked from it. Answers the status of the program.
int run(int count, char **arguments, void (*start)());

} // namespace test_runner

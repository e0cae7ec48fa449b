# The front door: each target is one command of CMake or of a script under tools/, which can be used without make, too.
# A comment after `##` is the target's line in `make help`.

preset := linux-i386
build  := tools/build.sh $(preset)

.PHONY: help setup configure build macos demo check test test-isolated test-macos bench bench-check sanitize valgrind fuzz coverage mutations format check-format docs package clean
.DEFAULT_GOAL := help

help: ## this list
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "  make %-14s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

setup: ## install missing build tools, make the 32-bit sysroot in the cache (the other targets do it by themselves)
	@tools/setup/setup.sh

configure: setup
	@tools/setup/configure.sh $(preset)

build: configure ## the plug-in, the embedded host and everything beside them, in build/linux-i386
	@$(build) all

macos: configure ## the plug-in for 32-bit Intel macOS, build/macos-i386/NSUserDefaults.dylib
	@$(build) macos
	@cat build/macos-i386/NSUserDefaults.dylib.checked

demo: configure ## a short tour of the class in the embedded host
	@$(build) plughost NSUserDefaults family $(filter macos,$(PLUGIN))
	@host/plughost/demo.sh $(PLUGIN)

check: build ## every test but the validator's thousands of cases: the one to run while working
	@tools/run-tests.py $(preset) --label-exclude thorough

test: build ## build and run every test; the last line counts them
	@tools/run-tests.py $(preset)

test-isolated: build ## the same with each case in a process of its own from its start, without forks (minutes)
	@TESTS_ISOLATED=1 tools/run-tests.py $(preset)

test-macos: build ## the macOS plug-in's tests at every level of optimisation and with both kinds of fix-ups (minutes)
	@tools/test-macos-variants.sh $(preset)

bench: configure ## what a call through the plug-in costs, as tables, JSON and a plot in build/linux-i386/bench
	@$(build) bench
	@tools/bench/run.sh full build/$(preset)

bench-check: configure ## count both files' instructions; status 1 when a budget of bench/budgets.json is missed
	@$(build) bench
	@tools/bench/run.sh check build/$(preset)

sanitize: setup ## the tests and the validator under AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
	@tools/sanitize.sh $(preset)-sanitize

valgrind: build ## a tour of the class under memcheck: no errors, no leaks
	@tools/valgrind.sh $(preset)

fuzz: setup ## the fuzzers, each for FUZZ_TIME seconds (60 unless given)
	@tools/fuzz.sh $(or $(FUZZ_TIME),60)

coverage: setup ## which branches of the plug-in the tests take, and which they do not
	@tools/coverage.sh $(preset)-coverage

mutations: build ## mistakes made on purpose in every folder of the product, and who notices each
	@tools/mutations/run.sh

format: setup ## format the sources
	@tools/format.sh

check-format: setup ## status 1 when a source file is not formatted
	@tools/format.sh --check

docs: ## the reference as a site, build/docs/site/index.html (installs its generator)
	@tools/docs/make-site.sh

package: macos ## the archive for users, dist/NSUserDefaults-VERSION.zip
	@tools/package/make-package.sh

clean: ## remove what was built (the sysroot in the cache stays)
	rm -rf build dist

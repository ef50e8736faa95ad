# The front door. Every goal installs what is missing and builds first.

.PHONY: run demo test lint asan asan-core tsan bench truth figures torture fuzz fuzz-coverage mutants package guides pictures mac-check clean test-browser

SCENARIO = chrome-tabs
SEEDS = 100
FIRST = 1

system := $(shell uname)
pacelet = build/release/bin/pacelet
ifeq ($(system),Darwin)
pacelet = build/release/bin/Pacelet.app/Contents/MacOS/Pacelet
endif

run: ## Build and say why this machine is slow: in a window, or as text where there is no display
	@scripts/build.sh release pacelet pacelet-report
	@$(pacelet)

demo: ## The same window on a simulated Mac: make demo SCENARIO=spotlight-stuck
	@scripts/build.sh release pacelet-demo
	@build/release/bin/pacelet-demo $(SCENARIO)

test: ## The whole release suite, after a short run of every fuzzer (a Mac's compiler has none)
ifneq ($(system),Darwin)
	@scripts/build.sh fuzz
	@scripts/fuzz.sh 2000 5
endif
	@scripts/build.sh release
	@ctest --preset release -j2

test-browser: ## The tab cleaner on a real browser, which is installed if it is missing
	@scripts/install.sh scripts/packages-browser.txt
	@scripts/build.sh release real-browser-tests
	@scripts/test-browser.sh

lint: ## Layout of the code, include walls, QML and clang-tidy, over the whole tree
	@scripts/build.sh release
	@scripts/lint.sh

asan: ## The tests under the address and undefined-behaviour sanitizers
	@scripts/build.sh asan
	@ctest --preset asan -j2

asan-core: ## The same for what has no screens: Core, the hosts, and the long-lived objects
	@scripts/build.sh asan tests-core tests-host tests-live
	@ctest --preset asan -j2 -L "core|host|live"

tsan: ## The same under the thread sanitizer
	@scripts/build.sh tsan tests-core tests-host tests-live
	@ctest --preset tsan -j2 -L "core|host|live"

bench: ## Every benchmark
	@scripts/build.sh release benchmarks
	@for benchmark in build/release/bin/*-benchmark; do $$benchmark || exit 1; done

truth: ## Speed test and traffic list against lines of known speed, in network namespaces
	@scripts/build.sh release truth delay-line
	@scripts/truth.sh

figures: ## What the window costs, and those of other task managers: a start, memory, processor time
	@scripts/build.sh release window-figures
	@scripts/window-figures.sh

torture: ## A person who tries everything, on machines on which everything happens: make torture SEEDS=100
	@scripts/build.sh release pacelet-torture
	@build/release/bin/pacelet-torture $(SEEDS) $(FIRST)

HOURS = 0.5

fuzz: ## All fuzzers for some hours, keeping what they reach in build/fuzz/corpus: make fuzz HOURS=8
	@scripts/build.sh fuzz
	@scripts/fuzz-long.sh $(HOURS)

fuzz-coverage: ## How many lines of each parser the fuzzers' corpora reach
	@scripts/build.sh fuzz-coverage
	@scripts/fuzz-coverage.sh

COUNT = 500
SEED = 1
JOBS = 2
PART = Core

mutants: ## Small changes to the code that no test notices: make mutants PART=Core/Diagnosis COUNT=0 (all of them)
	@scripts/install.sh scripts/packages.txt
	@python3 tools/mutants/mutants.py --count $(COUNT) --seed $(SEED) --jobs $(JOBS) $(PART)

package: ## A Debian package of the programs, in build/packages
	@scripts/build.sh release pacelet pacelet-demo pacelet-report pacelet_desktop_files
	@cd build/release && cpack -B ../packages

guides: ## The guide pages that the program links to, as a site in build/guides
	@scripts/build.sh release pacelet-guides
	@rm -rf build/guides
	@build/release/bin/pacelet-guides resources/processes.json tools/guides/guides.css \
		resources/icons/pacelet.svg build/guides

mac-check: ## On Linux, what a Mac will have to build: compiled, the report linked, the bundle looked at
	@scripts/mac-check.sh

pictures: ## The pictures of the README, in docs/pictures
	@scripts/build.sh release pacelet-gallery real-browser-tests
	@scripts/pictures.sh

clean:
	@rm -rf build

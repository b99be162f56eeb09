# What a newcomer types. CMakePresets.json holds the build recipes, scripts/ the longer steps.
PRESET ?= release
JOBS ?= $(shell nproc)
# The compiler cache stays in the build folder, unless told otherwise: nobody's home is touched.
export CCACHE_DIR ?= $(CURDIR)/build/ccache
export CCACHE_BASEDIR ?= $(CURDIR)
export CCACHE_NOHASHDIR ?= 1

.PHONY: all run test asan lint fuzz torture bench clean
.DEFAULT_GOAL := all

# Release build under build/release, programs in build/release/bin.
all:
	scripts/setup.sh build
	scripts/build.sh $(PRESET) $(JOBS)

# Opens the program on sample data; without a display it makes a table, daily values and a graph and says where.
run:
	scripts/setup.sh build
	scripts/run.sh $(JOBS)

# Every test, windows included, without a display.
test: all
	scripts/test.sh $(PRESET) $(JOBS)

# The same tests under AddressSanitizer and UndefinedBehaviorSanitizer.
asan:
	scripts/setup.sh build
	scripts/build.sh asan $(JOBS)
	scripts/test.sh asan $(JOBS)

# Format, clang-tidy and a few rules of the house.
lint:
	scripts/setup.sh lint
	scripts/build.sh $(PRESET) $(JOBS)
	scripts/lint.sh $(PRESET) $(JOBS)

# Each fuzz target for FUZZ_SECONDS.
FUZZ_SECONDS ?= 60
fuzz:
	scripts/setup.sh fuzz
	scripts/build.sh fuzz $(JOBS)
	scripts/fuzz.sh $(FUZZ_SECONDS)

# Kills, faults, damaged read-outs and random work, in the thousands; takes some minutes. docs/reliability.md.
torture:
	scripts/setup.sh build
	scripts/build.sh $(PRESET) $(JOBS) torture
	scripts/torture.sh $(PRESET)

bench:
	scripts/setup.sh bench
	scripts/build.sh bench $(JOBS)
	bench/bench.sh

clean:
	rm -rf build

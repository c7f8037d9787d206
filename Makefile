# Entry points for building and testing tqSarn with the headless host. Each target runs
# scripts/setup first (silent when nothing is missing), then configures with CMake; the
# configure step is cheap to repeat, so every target re-runs it.
#
#   make build      build into build/ (RelWithDebInfo)
#   make test       build, then run every test with ctest
#   make sanitize   build into build-asan/ with AddressSanitizer + UBSan (Debug), run every test
#   make demo       build, then play DEMO_SESSION with tqsarn: retopo mesh, frames, report in out/
#   make bench      build, then run the programs in build/bench/, writing JSON into out/bench/
#   make fuzz       build build-asan/, then fuzz the host for FUZZ_SECONDS, findings into out/fuzz/
#   make package    build, then install the Maya module into out/module/ and zip it as out/tqSarn-module.zip
#   make clean      remove build/, build-asan/ and out/
#
# Variables: CMAKE_ARGS (extra configure arguments, applied last), JOBS, CTEST_JOBS,
# TEST_TIMEOUT (seconds per test unless a test sets its own), DEMO_SESSION, DEMO_ARGS,
# BENCH_ARGS, FUZZ_SECONDS (the whole campaign, shared by its targets), FUZZ_SEED, FUZZ_TARGET.
# With CI=true in the environment, warnings are errors (-DTQSARN_WERROR=ON).

SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
.DEFAULT_GOAL := build

BUILD_DIR    := build
ASAN_DIR     := build-asan
OUT_DIR      := out
JOBS         ?= $(shell nproc 2>/dev/null || echo 2)
CTEST_JOBS   ?= 2
TEST_TIMEOUT ?= 1500
CMAKE_ARGS   ?=
DEMO_SESSION ?= examples/several-sarns-side-by-side.json
DEMO_ARGS    ?=
BENCH_ARGS   ?=
FUZZ_SECONDS ?= 900
FUZZ_SEED    ?= $(shell date +%s)
FUZZ_TARGET  ?= all

ifneq ($(filter true TRUE True 1 yes,$(CI)),)
WERROR := ON
else
WERROR := OFF
endif

BASE_CMAKE_ARGS = -DTQSARN_WERROR=$(WERROR) -DTQSARN_SCAN_DIR=$(shell bash scripts/scans --dir)
BUILD_CMAKE_ARGS := -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTQSARN_SANITIZE=OFF
ASAN_CMAKE_ARGS := -DCMAKE_BUILD_TYPE=Debug -DTQSARN_SANITIZE=ON -DTQSARN_BENCHMARKS=OFF

# Leak checking stays on: Qt under the offscreen platform, Embree and Assimp exit clean.
SANITIZER_ENV := ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1 \
                 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# Tests, the demo and the benchmarks never need a display.
export QT_QPA_PLATFORM ?= offscreen

CTEST_FLAGS = --output-on-failure -j$(CTEST_JOBS) --timeout $(TEST_TIMEOUT)

# configure DIR, ARGS: a build directory keeps the generator it was made with; a new one
# uses Ninja when it is installed.
define configure
	generator=(); \
	if [[ ! -f "$(1)/CMakeCache.txt" ]] && command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi; \
	cmake -S . -B "$(1)" "$${generator[@]}" $(BASE_CMAKE_ARGS) $(2) $(CMAKE_ARGS)
endef

.PHONY: package setup configure build test sanitize-configure sanitize-build sanitize demo bench fuzz clean help

help:
	@sed -n '1,17p' $(firstword $(MAKEFILE_LIST)) | sed 's/^# \{0,1\}//'

setup:
	@bash scripts/setup
	@bash scripts/scans >/dev/null

configure: setup
	@$(call configure,$(BUILD_DIR),$(BUILD_CMAKE_ARGS))

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

test: build
	ctest --test-dir $(BUILD_DIR) $(CTEST_FLAGS)

sanitize-configure: setup
	@$(call configure,$(ASAN_DIR),$(ASAN_CMAKE_ARGS))

sanitize-build: sanitize-configure
	cmake --build $(ASAN_DIR) -j $(JOBS)

sanitize: sanitize-build
	$(SANITIZER_ENV) ctest --test-dir $(ASAN_DIR) $(CTEST_FLAGS)

# The session plays through the real plug-in on its scan (DEMO_ARGS go to `tqsarn play`, e.g.
# --scan FILE); one that played to its end with some steps failed (exit 1, such as an undo
# whose failed status the plug-in reports) still leaves its outputs, and the demo says so.
demo: build
	@player="$(BUILD_DIR)/apps/tqsarn/tqsarn"; \
	if [[ ! -x "$$player" ]]; then echo "make demo: $$player was not built" >&2; exit 1; fi; \
	command=("$$player" play "$(DEMO_SESSION)" --out "$(OUT_DIR)" $(DEMO_ARGS)); \
	echo "Playing $(DEMO_SESSION): $${command[*]}"; \
	rc=0; "$${command[@]}" || rc=$$?; \
	if (( rc == 1 )); then echo "make demo: some steps failed; report.json says which and why"; \
	elif (( rc != 0 )); then exit $$rc; fi

bench: build
	@shopt -s nullglob; programs=(); \
	for f in "$(BUILD_DIR)"/bench/*; do if [[ -f "$$f" && -x "$$f" ]]; then programs+=("$$f"); fi; done; \
	if (( $${#programs[@]} == 0 )); then \
	    echo "make bench: no benchmark programs in $(BUILD_DIR)/bench/ yet; nothing to run."; exit 0; \
	fi; \
	mkdir -p "$(OUT_DIR)/bench"; \
	for p in "$${programs[@]}"; do \
	    name=$$(basename "$$p"); \
	    echo "== $$name"; \
	    "$$p" --benchmark_out="$(OUT_DIR)/bench/$$name.json" --benchmark_out_format=json $(BENCH_ARGS); \
	done; \
	echo; \
	echo "Benchmark results (JSON) are in $(CURDIR)/$(OUT_DIR)/bench/"

# The campaign runs under the sanitizers; an input that crashes or hangs the process stays
# in out/fuzz/ as pending-<target>.<ext>, one that misbehaves as <target>-<seed>-<n>.<ext>.
# Either replays with: build-asan/tests/host/fuzz/hostFuzz --replay FILE
fuzz: sanitize-build
	@mkdir -p "$(OUT_DIR)/fuzz"; \
	fuzzer="$(ASAN_DIR)/tests/host/fuzz/hostFuzz"; \
	echo "Fuzzing the host for $(FUZZ_SECONDS) s (seed $(FUZZ_SEED), target $(FUZZ_TARGET))"; \
	if $(SANITIZER_ENV) LSAN_OPTIONS=suppressions=$(CURDIR)/tests/host/fuzz/assimpLeaks.supp \
	        "$$fuzzer" --target $(FUZZ_TARGET) --seconds $(FUZZ_SECONDS) --seed $(FUZZ_SEED) \
	        --out "$(OUT_DIR)/fuzz"; then \
	    echo "make fuzz: no findings"; \
	else \
	    rc=$$?; echo "make fuzz: findings (exit $$rc); inputs kept in $(CURDIR)/$(OUT_DIR)/fuzz/:"; \
	    find "$(OUT_DIR)/fuzz" -maxdepth 1 -type f -printf '  %P\n' | sort; exit 1; \
	fi

package: build
	rm -rf "$(OUT_DIR)/module" "$(OUT_DIR)/tqSarn-module.zip"
	cmake --install $(BUILD_DIR) --prefix "$(OUT_DIR)/module"
	cd "$(OUT_DIR)/module" && cmake -E tar cf ../tqSarn-module.zip --format=zip tqSarn.mod tqSarn
	@echo "The module is in $(CURDIR)/$(OUT_DIR)/tqSarn-module.zip"

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR) $(OUT_DIR)

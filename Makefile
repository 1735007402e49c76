# Two ways in: `make run` builds the release program and starts it; `make test` builds the
# sanitizer build and runs every test under a Spanish locale and a far-from-UTC time zone.
JOBS ?= $(shell nproc)
RELEASE_DIR := build/release
TEST_DIR := build/test
TEST_ENV := LANG=es_ES.UTF-8 LC_ALL=es_ES.UTF-8 TZ=Pacific/Kiritimati QT_QPA_PLATFORM=offscreen \
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

.PHONY: run test build release deps screenshots bench package fuzz clean

deps:
	@scripts/install-deps

release: deps
	@cmake -S . -B $(RELEASE_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
	@cmake --build $(RELEASE_DIR) -j $(JOBS)

run: release
	$(RELEASE_DIR)/src/app/tallora5

build: deps
	@cmake -S . -B $(TEST_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTALLORA_SANITIZE=ON >/dev/null
	@cmake --build $(TEST_DIR) -j $(JOBS)

test: build
	cd $(TEST_DIR) && $(TEST_ENV) ctest --output-on-failure -j $(JOBS)

screenshots: release
	QT_QPA_PLATFORM=offscreen $(RELEASE_DIR)/src/app/tallora5-screenshots build/screenshots
	@echo "Screenshots in build/screenshots"

package: release
	@cmake --build $(RELEASE_DIR) --target package
	@ls $(RELEASE_DIR)/tallora5_*.deb

bench: release
	@for b in $(RELEASE_DIR)/bench/bench_*; do echo "== $$b"; $$b; done

# A reader under libFuzzer for FUZZ_SECONDS (30 minutes unless given): the interchange files
# seeded with their golden files, or with FUZZ=norma43 the bank statements seeded with
# tests/data/norma43. A crash or hang is left in build/fuzz/findings.
FUZZ_DIR := build/fuzz
FUZZ_SECONDS ?= 1800
FUZZ ?= interchange
ifeq ($(FUZZ),norma43)
FUZZ_TARGET := fuzz_norma43_reader
FUZZ_SEEDS := tests/data/norma43/*.n43
else
FUZZ_TARGET := fuzz_interchange_reader
FUZZ_SEEDS := tests/data/interchange/*/input.dat
endif
fuzz:
	@scripts/install-deps --fuzz
	@cmake -S . -B $(FUZZ_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTALLORA_FUZZ=ON \
		-DCMAKE_CXX_COMPILER=clang++ >/dev/null
	@cmake --build $(FUZZ_DIR) -j $(JOBS) --target $(FUZZ_TARGET)
	@mkdir -p $(FUZZ_DIR)/$(FUZZ)/corpus $(FUZZ_DIR)/findings
	@for f in $(FUZZ_SEEDS); do cp $$f $(FUZZ_DIR)/$(FUZZ)/corpus/$$(echo $$f | tr / _); done
	QT_QPA_PLATFORM=offscreen $(FUZZ_DIR)/fuzz/$(FUZZ_TARGET) $(FUZZ_DIR)/$(FUZZ)/corpus \
		-max_total_time=$(FUZZ_SECONDS) -max_len=65536 -timeout=10 -artifact_prefix=$(FUZZ_DIR)/findings/

clean:
	rm -rf build

# make demo   - build the module and run it on the sample portrait (before/after pictures in out/)
# make test   - build everything and run every test (native and under Wine)
# make bench  - native release benchmark of the red-eye pipeline
# make bench-host - one real run on a 24-megapixel photo through the test host under Wine
# make release - the download out/quorvex-<version>-win32.zip (module, manual, INSTALL.txt)
# make soak   - the long randomized host campaign under Wine: SOAK_COUNT configurations,
#               headless unless SOAK_HEADLESS=0; SOAK_SEED=N replays a campaign
# make fuzz   - libFuzzer runs of the pixel code under ASan/UBSan, FUZZ_SECONDS per target
SHELL := /bin/bash
JOBS ?= 2
NATIVE := build/native
BENCH := build/bench
WIN := build/win
FUZZ := build/fuzz
SOAK_COUNT ?= 100000
SOAK_HEADLESS ?= 1
FUZZ_SECONDS ?= 300

.PHONY: all deps native win test test-native test-wine demo release bench bench-host soak fuzz format \
	clean

all: native win

deps:
	@bash scripts/install-deps.sh

native: deps
	cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUORVEX_SANITIZE=ON >/dev/null
	cmake --build $(NATIVE) -j$(JOBS)

win: deps
	cmake -S . -B $(WIN) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-i686.cmake -DCMAKE_BUILD_TYPE=Release >/dev/null
	cmake --build $(WIN) -j$(JOBS)

test-native: native
	cd $(NATIVE) && ctest --output-on-failure -j$(JOBS)

test-wine: win
	bash scripts/with-display.sh bash -c 'cd $(WIN) && ctest --output-on-failure --timeout 120'

test: test-native test-wine

demo: win
	bash scripts/demo.sh $(WIN)

release: demo
	bash scripts/release.sh $(WIN)

bench: deps
	cmake -S . -B $(BENCH) -DCMAKE_BUILD_TYPE=Release -DQUORVEX_SANITIZE=OFF >/dev/null
	cmake --build $(BENCH) -j$(JOBS) --target redeye_bench
	$(BENCH)/bench/redeye_bench

bench-host: win
	bash scripts/wine-prefix.sh
	cd $(WIN) && . ../../scripts/wine-env.sh && wine bench/host/host_run_bench.exe

soak: win
	SOAK_HEADLESS=$(SOAK_HEADLESS) bash tests/wine/robust/soak.sh $(WIN) $(SOAK_COUNT) $(JOBS)

fuzz: deps
	cmake -S tests/fuzz/libfuzzer -B $(FUZZ) -DCMAKE_CXX_COMPILER=clang++ >/dev/null
	cmake --build $(FUZZ) -j$(JOBS)
	bash tests/fuzz/run.sh $(FUZZ) $(FUZZ_SECONDS)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build out

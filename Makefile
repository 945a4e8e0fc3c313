# make demo   - build the modules and run one on the sample portrait (before/after pictures in out/)
# make test   - build everything and run every test (native, and under Wine every Windows
#               build this machine can execute: 64-bit always, 32-bit where it can)
# make bench  - native release benchmark of the red-eye pipeline
# make bench-host - a real run, the dialog's opening and preview re-runs on a 24-megapixel photo
#               through the test host under Wine
# make release - the downloads out/quorvex-<version>-win32.zip and -win64.zip (module, manual,
#               INSTALL.txt)
# make soak   - the long randomized host campaign under Wine: SOAK_COUNT configurations,
#               headless unless SOAK_HEADLESS=0; SOAK_SEED=N replays a campaign
# make fuzz   - libFuzzer runs of the pixel code under ASan/UBSan, FUZZ_SECONDS per target
SHELL := /bin/bash
JOBS ?= 2
NATIVE := build/native
BENCH := build/bench
WIN32 := build/win32
WIN64 := build/win64
# The Windows build the demo and the soak run: the 32-bit one where this
# machine can execute it, else the 64-bit one.
RUNNABLE_WIN = $(shell bash scripts/can-run.sh $(WIN32) >/dev/null && echo $(WIN32) || echo $(WIN64))
FUZZ := build/fuzz
SOAK_COUNT ?= 100000
SOAK_HEADLESS ?= 1
FUZZ_SECONDS ?= 300

.PHONY: all deps native win win32 win64 test test-native test-wine demo release bench bench-host \
	soak fuzz format clean

all: native win

deps:
	@bash scripts/install-deps.sh

native: deps
	cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUORVEX_SANITIZE=ON >/dev/null
	cmake --build $(NATIVE) -j$(JOBS)

win: win32 win64

win32: deps
	cmake -S . -B $(WIN32) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-i686.cmake -DCMAKE_BUILD_TYPE=Release >/dev/null
	cmake --build $(WIN32) -j$(JOBS)

win64: deps
	cmake -S . -B $(WIN64) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-x86_64.cmake -DCMAKE_BUILD_TYPE=Release >/dev/null
	cmake --build $(WIN64) -j$(JOBS)

test-native: native
	cd $(NATIVE) && ctest --output-on-failure -j$(JOBS)

test-wine: win
	bash scripts/test-windows.sh $(WIN32) $(WIN64)

test: test-native test-wine

demo: win
	@bash scripts/can-run.sh $(WIN32) >/dev/null || \
		echo "demo: the 32-bit module was built but not run: $$(bash scripts/can-run.sh $(WIN32))"
	bash scripts/demo.sh $(RUNNABLE_WIN)

release: demo
	bash scripts/release.sh $(WIN32) $(WIN64)

bench: deps
	cmake -S . -B $(BENCH) -DCMAKE_BUILD_TYPE=Release -DQUORVEX_SANITIZE=OFF >/dev/null
	cmake --build $(BENCH) -j$(JOBS) --target redeye_bench
	$(BENCH)/bench/redeye_bench

bench-host: win
	bash scripts/bench-host.sh $(WIN32) $(WIN64)

soak: win
	SOAK_HEADLESS=$(SOAK_HEADLESS) bash tests/wine/robust/soak.sh $(RUNNABLE_WIN) $(SOAK_COUNT) $(JOBS)

fuzz: deps
	cmake -S tests/fuzz/libfuzzer -B $(FUZZ) -DCMAKE_CXX_COMPILER=clang++ >/dev/null
	cmake --build $(FUZZ) -j$(JOBS)
	bash tests/fuzz/run.sh $(FUZZ) $(FUZZ_SECONDS)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build out

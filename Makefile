# The commands of a developer. `make run` and `make test` need nothing but make and root (or sudo) on Debian 12.
.PHONY: run test bench fuzz lint asan setup build clean
JOBS ?= $(shell nproc)

setup:
	@tools/setup

build: setup
	@cmake --preset dev >build-configure.log 2>&1 || { cat build-configure.log; exit 1; }; rm -f build-configure.log
	@cmake --build --preset dev -j $(JOBS)

run: build
	@tools/run-samples build/dev

test: build
	@ctest --preset dev -j $(JOBS)

asan: setup
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan -j $(JOBS)
	@ctest --preset asan -j $(JOBS)

bench: setup
	@cmake --preset release >/dev/null
	@cmake --build --preset release -j $(JOBS)
	@tools/bench build/release

fuzz:
	@tools/setup clang
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz -j $(JOBS)
	@tools/fuzz build/fuzz

lint: setup
	@tools/lint

clean:
	rm -rf build

# The commands of a developer. `make run` and `make test` need nothing but make and root (or sudo) on Debian 12.
.PHONY: configure run test bench fuzz lint asan setup build clean oracle site-check install pictures
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local

setup:
	@tools/setup

configure: setup
	@cmake --preset dev >build-configure.log 2>&1 || { cat build-configure.log; exit 1; }; rm -f build-configure.log

build: configure
	@cmake --build --preset dev -j $(JOBS)

run: configure
	@cmake --build --preset dev -j $(JOBS) --target tarnsift $(if $(DISPLAY)$(WAYLAND_DISPLAY),tarnsift-window)
	@tools/run-samples build/dev

test: build
	@ctest --preset dev -j $(JOBS)

asan: setup
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan -j $(JOBS)
	@ctest --preset asan -j $(JOBS)

# Compares the analyser with GnuCOBOL's compiler on the sample programs, or on DIR (copybooks: COPY, folders with : between).
oracle: setup
	@tools/setup gnucobol python3
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev --target cobol_dump -j $(JOBS) >/dev/null
	@python3 tests/oracle/oracle.py $(if $(COPY),--copy "$(COPY)") $(if $(DIR),"$(DIR)",tests/oracle/programs samples/bank)

# Looks at the samples' web pages with a browser, and takes pictures of them.
site-check: configure
	@tools/setup chromium fonts-dejavu-core
	@cmake --build --preset dev -j $(JOBS) --target tarnsift
	@tools/site-check build/dev

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

# Builds with optimisation and installs below PREFIX; DESTDIR goes in front of it for packagers.
install: setup
	@cmake --preset release -DTARNSIFT_BENCH=OFF >/dev/null
	@cmake --build --preset release -j $(JOBS) --target tarnsift tarnsift-window Tarnsift
	@DESTDIR="$(DESTDIR)" cmake --install build/release --prefix "$(PREFIX)" --strip >/dev/null
	@echo "installed below $(DESTDIR)$(PREFIX)"

# Takes the pictures of the window in docs/pictures.
pictures: configure
	@tools/setup xvfb fonts-dejavu-core fonts-noto-cjk
	@cmake --build --preset dev -j $(JOBS) --target tarnsift desktop_pictures
	@tools/pictures build/dev

clean:
	rm -rf build

# The front door: each target does all of its set-up.
#
#   make run      show the launcher with the menu of data/ (CONFIG=DIR for another menu)
#   make test     build everything and run all tests (FILTER=REGEX: those whose name matches)
#   make check    look for faults with clang-format, cppcheck, clang-tidy and sanitizers
#   make bench    run the benchmarks
#   make fuzz     look for files that break a reader, SECONDS=60 for each (TARGET="png menu": these only)
#   make build    build the launcher, build/bin/zel
#   make image    build a bootable rescue disc, build-image/zel-rescue.iso (as root)
#   make boot-test  start it in a virtual machine and use it as a person would
#   make live     build a live system of Debian with it, build-live/zel-live.iso (as root)
#   make live-test  start that from BIOS and UEFI, and choose entries
#   make dist     make the release's tarball, build/zel-VERSION.tar.xz, and Debian's source package
#   make deb      build Debian's packages of it for amd64 and i386, build/*.deb (as root)
#   make deb-test  install, run, upgrade and purge them in a minimal Debian
#   make install  put it to /usr/sbin and its data to /etc/zel, below DESTDIR
#   make clean    remove everything that was built

CONFIG ?= data
SECONDS ?= 60
TARGET ?=

.PHONY: run test check bench fuzz image boot-test live live-test dist deb deb-test build install clean setup configure

build: configure
	cmake --build --preset release --target zel zel-check zel-gallery zel-preview zel-skin zel-trial

run: build
	tools/run "$(CONFIG)"

test: configure
	cmake --build --preset release
	tools/test "$(FILTER)"

bench: configure
	cmake --build --preset release --target benchmarks
	bench/report
	bench/terminal

check:
	tools/setup --check
	tools/check

fuzz: setup
	tools/setup --fuzz
	fuzz/run $(SECONDS) $(TARGET)

image:
	tools/setup --image
	image/build

boot-test: image
	cd tests/boot && export PYTHONDONTWRITEBYTECODE=1; \
	python3 -W ignore boot_test.py DiscTest SpeechTest & disc=$$!; \
	python3 -W ignore boot_test.py ConsoleTest ModeTest; rest=$$?; \
	wait $$disc && exit $$rest
	image/measure

live: deb
	tools/setup --live
	live/build

live-test: live
	cd tests/live && python3 -B -W ignore live_test.py -v

dist:
	tools/setup --deb
	tools/dist

deb:
	tools/setup --deb
	tools/deb

deb-test: deb
	tools/setup --image
	image/steps/firmware
	cd tests/packages && unshare --mount python3 -B -W ignore package_test.py

install: build
	DESTDIR="$(DESTDIR)" cmake --install build

clean:
	rm -rf build build-*

configure: setup
	@cmake --preset release >/dev/null

setup:
	@tools/setup

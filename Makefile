# The two commands are `make gallery` and `make test`; `make help` names the rest.
SHELL := /bin/bash
.SHELLFLAGS := -euo pipefail -c
.DEFAULT_GOAL := help
.DELETE_ON_ERROR:

export JOBS ?= $(shell nproc)
AREA ?=
FUZZ_SECONDS ?= 60
scripts := scripts
trees := native native-release win32 win64

.PHONY: help setup gallery test tidy format fuzz bench size clean $(trees)

help: ## this list
	@awk -F ':.*## ' '/^[a-z0-9 -]+:.*## / { printf "  make %-22s %s\n", $$1, $$2 }' Makefile

setup: ## install what is missing, prepare Wine
	@$(scripts)/setup.sh

# CMake runs by itself when its files change; here only for a tree that was never configured.
build/%/build.ninja: CMakePresets.json
	cmake --preset $*
	@touch $@

native native-release win32 win64: %: build/%/build.ninja ## build one tree (setup first)
	cmake --build --preset $@ --parallel $(JOBS)
	@ninja -C build/$@ -t cleandead >/dev/null # programs whose sources are gone must not run as tests

gallery: ## build the library, show every control, leave build/gallery/*.png
	@$(scripts)/setup.sh build wine
	@$(MAKE) --no-print-directory -s build/win32/build.ninja
	cmake --build --preset win32 --parallel $(JOBS) --target kestrelon2012 zlibwapi gallery
	@$(scripts)/gallery.sh

test: setup ## build everything, run every test; AREA="imaging win32/" runs a part
	@$(MAKE) --no-print-directory native win32 win64
	@$(scripts)/run_tests.py $(AREA)

tidy: ## clang-tidy over the portable half and its tests
	@$(scripts)/setup.sh build
	@$(MAKE) --no-print-directory native
	@$(scripts)/tidy.py --tests

format: ## lay out all C++ files
	@$(scripts)/setup.sh build
	@$(scripts)/layout.py

fuzz: ## fuzz every reader for FUZZ_SECONDS (60) each
	@$(scripts)/setup.sh build
	@$(MAKE) --no-print-directory -s build/native/build.ninja
	cmake --build build/native --target fuzz --parallel $(JOBS)
	@$(scripts)/fuzz.sh $(FUZZ_SECONDS)

bench: ## benchmarks beside their peers, optimised, 1 core
	@$(scripts)/setup.sh build wine bench
	cmake --preset native-release
	cmake --build build/native-release --target bench --parallel $(JOBS)
	cmake --preset win32
	cmake --build build/win32 --target bench --parallel $(JOBS)
	@$(scripts)/bench.sh

size: ## what stands in the 32-bit library, by part; into docs/notes/size.md
	@$(scripts)/setup.sh build
	@$(MAKE) --no-print-directory -s build/win32/build.ninja
	cmake --build --preset win32 --parallel $(JOBS) --target kestrelon2012
	@$(scripts)/size_table.py build/win32/kestrelon2012.map build/win32/kestrelon2012.ocx --into docs/notes/size.md

clean: ## remove build/
	@for bits in 32 64; do \
	  for prefix in build/wine/prefix$$bits*/; do \
	    [ ! -d "$$prefix" ] || KESTRELON_PREFIX=$$PWD/$$prefix KESTRELON_WINE=server $(scripts)/wine$$bits -k || true; \
	  done; \
	done
	rm -rf build

# The front door: `make help`. The presets of CMakePresets.json stand behind it.

.DEFAULT_GOAL := help
MAKEFLAGS += --no-print-directory
SHELL := bash
JOBS ?= $(shell nproc)

# $(call configure,PRESET): quiet while all is well
define configure
	@log=$$(mktemp); trap 'rm -f "$$log"' EXIT; \
	if ! cmake --preset $(1) >"$$log" 2>&1; then \
	    cat "$$log" >&2; \
	    echo "make: configuring preset '$(1)' failed (see above). Is something missing? Try 'make setup'." >&2; \
	    echo "make: after a change of compiler, remove build/$(1) and try again." >&2; exit 1; \
	fi
endef

# $(call build,PRESET[,TARGET])
define build
	$(call configure,$(1))
	@cmake --build --preset $(1) -j $(JOBS) $(if $(2),--target $(2)) -- --quiet || \
	    { echo "make: building preset '$(1)' failed; the first error is above." >&2; exit 1; }
endef

# $(call test,PRESET)
define test
	@ctest --preset $(1) -j $(JOBS) || \
	    { echo "make: tests of preset '$(1)' failed; 'ctest --preset $(1) --rerun-failed' runs those again." >&2; exit 1; }
endef

##@ Everyday
.PHONY: help setup build demo test
help: ## this list
	@awk 'BEGIN { FS = ":.*## " } \
	    /^##@/ { printf "\n%s\n", substr($$0, 5) } \
	    /^[a-z]+:.*## / { printf "  make %-8s %s\n", $$1, $$2 }' Makefile

setup: ## install what build, demo and test need (apt-get; asks sudo where needed)
	@scripts/setup.sh base

build: setup ## the four products, in build/bin
	$(call build,dev)

demo: setup ## watch a node bring up a radio unit
	$(call build,dev,products)
	@scripts/demo.sh build/bin

test: build ## every test of the everyday build
	$(call test,dev)

##@ Quality
.PHONY: lint format asan tsan clang mutate bench arm
lint: ## formatting and static checks
	@scripts/setup.sh base lint
	@scripts/lint.sh format
	$(call configure,clang)
	@scripts/lint.sh tidy build/clang $(JOBS)

format: ## lay out every source file anew
	@scripts/setup.sh lint
	@scripts/lint.sh rewrite

asan: setup ## tests under AddressSanitizer and UndefinedBehaviorSanitizer
	$(call build,asan)
	$(call test,asan)

tsan: setup ## tests under ThreadSanitizer
	$(call build,tsan)
	$(call test,tsan)

clang: ## build and tests with clang++
	@scripts/setup.sh base lint
	$(call build,clang)
	$(call test,clang)

# make mutate N=40 SEED=7; all faults there are without N. MUTATE_ARGS: see scripts/mutate --help
mutate: ## put faults into src/, one at a time, and tell which ones no test notices
	@scripts/setup.sh base lint
	@python3 scripts/mutate $(if $(N),-n $(N)) --seed $(or $(SEED),1) $(MUTATE_ARGS)

arm: ## the 32-bit ARM build, its unit and component tests under emulation
	@scripts/setup.sh base arm
	$(call build,arm)
	$(call test,arm)

bench: setup ## measure the optimised build
	$(call build,release,bench)
	@build/release/bench/bench $(BENCH_ARGS)

##@ Around
.PHONY: docs install clean
docs: ## message catalogue and API documentation, in build/docs
	@scripts/setup.sh base docs
	$(call build,dev,cataloguedoc)
	@mkdir -p build/docs
	@build/dev/tools/cataloguedoc/cataloguedoc build/docs/messages.html
	@doxygen docs/Doxyfile
	@echo "build/docs/messages.html  every message: id, layout, who serves it"
	@echo "build/docs/api/index.html the module and the platform's interfaces"

install: setup ## the optimised module and its headers, to PREFIX (default build/install)
	$(call build,release,VornipcAdapter radio_vocabulary)
	@cmake --install build/release --prefix $(or $(PREFIX),build/install) >/dev/null
	@echo "installed to $(or $(PREFIX),build/install)"

clean: ## remove every build folder
	@rm -rf build

# SPDX-License-Identifier: MIT
# The front door. Everything a fresh machine needs is installed by scripts/install-deps.
.DEFAULT_GOAL := help
.PHONY: help deps build demo desk install-desk test test-qt5 test-qt6 nightly asan tsan coverage mutants format format-check tidy bench interop fuzz growth mixtures faults install docs package package-test clean

BUILD := build/dev
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local
# For each of the fuzz targets, two at a time on two processors.
FUZZ_SECONDS ?= 600
NIGHTLY_FUZZ_SECONDS ?= 3600
KILLS ?= 200
RTF_DOCUMENTS ?= 4000
MIXTURE_SECONDS ?= 300
NIGHTLY_MIXTURE_SECONDS ?= 3600
MUTANTS ?= 220

help: ## Show what can be made
	@awk -F ':.*## ' '/^[a-z-]+:.*## /{printf "  make %-14s %s\n", $$1, $$2}' $(MAKEFILE_LIST)

deps:
	@scripts/install-deps

build: deps ## Build the libraries, the tool and the tests
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev -j $(JOBS)

demo: deps ## Convert the example screenplay and show what comes out
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev -j $(JOBS) --target mvrtext
	@scripts/demo $(BUILD)

desk: deps ## Build and start mvrdesk, the example editor
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev -j $(JOBS) --target mvrdesk
	@$(BUILD)/examples/desk/mvrdesk examples/screenplay.fdx

test: build ## Run the whole test suite
	@ctest --preset dev -j $(JOBS)

nightly: build ## What takes hours: random documents, all static checks, growth, mixtures, faults, fuzzing
	@MVR_RANDOM_DOCUMENTS=$(RTF_DOCUMENTS) QT_QPA_PLATFORM=offscreen \
		$(BUILD)/tests/tst_rtfroundtrip randomDocuments -silent
	@scripts/tidy $(BUILD) --all
	@scripts/check-windows
	@MVR_EVERY_BYTE=1 QTEST_FUNCTION_TIMEOUT=3600000 QT_QPA_PLATFORM=offscreen \
		$(BUILD)/tests/tst_truncation -silent
	@$(MAKE) --no-print-directory faults growth
	@$(MAKE) --no-print-directory mixtures MIXTURE_SECONDS=$(NIGHTLY_MIXTURE_SECONDS)
	@$(MAKE) --no-print-directory fuzz FUZZ_SECONDS=$(NIGHTLY_FUZZ_SECONDS)

test-qt5 test-qt6: test-%: deps ## Run the test suite with that Qt
	@cmake --preset $* >/dev/null
	@cmake --build --preset $* -j $(JOBS)
	@ctest --preset $* -j $(JOBS)

asan: deps ## Run the test suite under AddressSanitizer and UndefinedBehaviorSanitizer
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan -j $(JOBS)
	@ctest --preset asan -j $(JOBS)

coverage: deps ## Lines and branches that the tests run, by file
	@scripts/install-deps gcovr
	@cmake --preset coverage >/dev/null
	@cmake --build --preset coverage -j $(JOBS)
	@find build/coverage -name '*.gcda' -delete
	@ctest --preset coverage -j $(JOBS) >build/coverage/tests.log || (cat build/coverage/tests.log; false)
	@scripts/coverage build/coverage

mutants: deps ## Change MUTANTS lines of the library, one at a time, and see whether tests fail
	@scripts/mutants --again tests/mutants.list --count $(MUTANTS) --jobs $(JOBS)

tsan: deps ## Run every operation in eight threads under ThreadSanitizer
	@cmake --preset tsan >/dev/null
	@cmake --build --preset tsan -j $(JOBS)
	@ctest --preset tsan

format: ## Format all sources in place
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

format-check: deps
	@git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

tidy: build ## Static checks of what differs from the upstream branch
	@scripts/tidy $(BUILD)

bench: deps ## Measure against the floors (minutes)
	@cmake --preset release >/dev/null
	@cmake --build --preset release -j $(JOBS)
	@scripts/bench build/release

interop: deps ## Exchange RTF with LibreOffice and pandoc, which are installed when missing; judge FDX
	@scripts/install-outside
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev -j $(JOBS) --target mvrtext mvrinterop
	@scripts/interop $(BUILD)

growth: deps ## Check that time and memory grow with hostile inputs, not faster (an hour)
	@cmake --preset release -DMVR_BUILD_BENCH=OFF >/dev/null
	@cmake --build --preset release -j $(JOBS) --target mvrtext
	@scripts/growth build/release/tool/mvrtext

mixtures: build ## Judge what the tool makes of random documents, MIXTURE_SECONDS long (SEED=n)
	@scripts/install-deps poppler-utils qpdf
	@scripts/mixtures $(BUILD)/tool/mvrtext --seconds $(MIXTURE_SECONDS) $(if $(SEED),--seed $(SEED)) \
		--keep build/mixtures

faults: build ## Fail each call of the system once, kill the tool KILLS times, starve it
	@scripts/install-deps strace
	@tests/faults $(BUILD)/tool/mvrtext $(KILLS)

fuzz: deps ## Fuzz readers and operations, FUZZ_SECONDS each: an hour in all
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz -j $(JOBS)
	@scripts/fuzz build/asan $(FUZZ_SECONDS)

install: ## Install below PREFIX
	@scripts/install-deps --to-install
	@cmake --preset release -DCMAKE_INSTALL_PREFIX=$(PREFIX) -DMVR_BUILD_BENCH=OFF >/dev/null
	@cmake --build --preset release -j $(JOBS)
	@cmake --install build/release

docs: deps ## Make the site of pages and classes in build/docs/html
	@scripts/docs

# One of them, or both, whose libraries then stand side by side.
QTS ?= 5 6
PACKAGED := $(addprefix build/package-qt,$(QTS))
package: docs ## Make Debian packages in dist, with the libraries for each of QTS
	@for qt in $(QTS); do \
		cmake --preset package-qt$$qt >/dev/null && \
		cmake --build --preset package-qt$$qt -j $(JOBS) || exit 1; done
	@scripts/package dist $(PACKAGED)

package-test: package ## Unpack them in a root of their own and build programs against them
	@scripts/package-test dist $(PACKAGED)

install-desk: install ## Install mvrdesk, too
	@cmake --preset release -DCMAKE_INSTALL_PREFIX=$(PREFIX) -DMVR_BUILD_BENCH=OFF -DMVR_BUILD_DESK=ON >/dev/null
	@cmake --build build/release -j $(JOBS) --target mvrdesk
	@cmake --install build/release --component desk

clean: ## Remove everything that was built
	@rm -rf build dist

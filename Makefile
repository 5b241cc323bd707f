# The two commands of the README. Both install what is missing first.
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

.PHONY: deps configure build run test clean bench package

deps:
	bash scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

# Everything: the program, its tests and the benchmarks.
build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Only the program and what it links: no test or benchmark is built before it starts.
run: configure
	cmake --build $(BUILD_DIR) -j $(JOBS) --target quaydrop
	bash scripts/run.sh $(BUILD_DIR)/src/app/quaydrop

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS) --timeout 300

# The Debian package, quaydrop_VERSION_ARCH.deb in the build folder: the program and its installed files only.
package: configure
	cmake --build $(BUILD_DIR) -j $(JOBS) --target quaydrop qd_desktop_files
	cd $(BUILD_DIR) && cpack -G DEB

bench: build
	bash bench/size.sh $(BUILD_DIR)/src/app/quaydrop
	bash bench/copy.sh $(BUILD_DIR)
	bash bench/drag-latency.sh $(BUILD_DIR)
	bash bench/images.sh $(BUILD_DIR)
	bash bench/startup.sh $(BUILD_DIR)
	bash bench/worker.sh $(BUILD_DIR)
	bash bench/zip.sh $(BUILD_DIR)
	bash bench/rename-trash.sh $(BUILD_DIR)
	bash bench/editor.sh $(BUILD_DIR)
	bash bench/board.sh $(BUILD_DIR)

clean:
	rm -rf $(BUILD_DIR)

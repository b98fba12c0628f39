# Quarrow: the commands a player or a maintainer needs.
#   make play      install what is missing, build, start the game
#   make test      install what is missing, build with sanitizers, run every test headless
#   make package   install what is missing, build the Debian package (in build/)
#   make fuzz      fuzz the score reader for FUZZ_SECONDS (default 600)
#   make soak      play thirty minutes of menus, levels, wins and losses, watching for growth
PACKAGES := cmake g++ make pkg-config dpkg-dev file \
	libsdl2-dev libglew-dev libgl-dev libpng-dev \
	libopenal-dev libvorbis-dev libogg-dev \
	libfreetype-dev libfontconfig-dev fonts-dejavu-core \
	libcairo2-dev libfluidsynth-dev fluidr3mono-gm-soundfont libebur128-dev \
	libgtest-dev clang-format clang libclang-rt-14-dev \
	xvfb xauth sox
# What the package tests check the Debian package with.
TEST_PACKAGES := lintian desktop-file-utils appstream

SHELL := /bin/bash
JOBS := $(shell nproc)
SUDO := $(shell [ "$$(id -u)" -eq 0 ] || echo sudo)

FUZZ_SECONDS ?= 600

.PHONY: play test package deps test-deps build build-test bench gallery clean fuzz soak

# Installs those of the Debian packages $(1) that are missing.
define install-missing
	@missing=""; for p in $(1); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q 'install ok installed' || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing Debian packages:$$missing"; \
	  $(SUDO) apt-get update -qq && \
	  DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq --no-install-recommends $$missing; \
	fi
endef

deps:
	$(call install-missing,$(PACKAGES))

test-deps:
	$(call install-missing,$(PACKAGES) $(TEST_PACKAGES))

build: deps
	cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build build -j $(JOBS) --target quarrow quarrow-driver

play: build
	cd build && ./quarrow

build-test: test-deps
	cmake -S . -B build-test -DCMAKE_BUILD_TYPE=Debug -DQUARROW_SANITIZE=ON
	cmake --build build-test -j $(JOBS)

test: build-test
	. tests/test-env.sh && cd build-test && \
	  xvfb-run -a -s "-screen 0 1280x1024x24" ctest --output-on-failure -j $(JOBS) -LE bench

fuzz: deps
	cmake -S . -B build-test -DCMAKE_BUILD_TYPE=Debug -DQUARROW_SANITIZE=ON
	cmake --build build-test --target fuzz_scores
	. tests/test-env.sh && tests/fuzz/run-fuzz.sh build-test/tests/fuzz_scores \
	  tests/fuzz/scores-seeds build-test/tests/fuzz-scores $(FUZZ_SECONDS)

# `make test` plays two cycles of the long session; this plays the thirty
# minutes (108000 frames of the virtual clock, a quarter of an hour or so).
soak: build-test
	. tests/test-env.sh && cd build-test && QUARROW_SOAK_FRAMES=108000 \
	  xvfb-run -a -s "-screen 0 1280x1024x24" ./tests/test_faults_soak

# The .deb lands in build/; `sudo apt install ./build/quarrow_*.deb` installs it.
package: deps
	cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build build -j $(JOBS) --target packaged
	cd build && cpack

bench: build
	cmake --build build -j $(JOBS) --target benchmarks
	cd build && xvfb-run -a -s "-screen 0 800x600x24" ctest -V -L bench

# One picture of every screen and overlay, from the real game, in build/gallery
# (windowed 800 x 600, and full screen at 1366 x 768 in build/gallery/wide).
gallery: build
	cmake --build build -j $(JOBS) --target quarrow-gallery
	cd build && ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 800x600x24" \
	  ./tools/gallery/quarrow-gallery gallery
	cd build && ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 1366x768x24" \
	  ./tools/gallery/quarrow-gallery --full-screen gallery/wide

clean:
	rm -rf build build-test

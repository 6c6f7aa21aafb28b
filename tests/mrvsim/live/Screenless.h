// SDL without a screen, for tests of what needs it.
#pragma once

#include <SDL.h>

#include <cstdlib>

namespace testing_support {

class Screenless {
 public:
  Screenless() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("SDL_RENDER_DRIVER", "software", 1);
    SDL_SetMainReady();
    // The machine's own joysticks are none of the tests' business.
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    SDL_SetHint(SDL_HINT_LINUX_JOYSTICK_DEADZONES, "0");
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
  }
  ~Screenless() { SDL_Quit(); }
  Screenless(const Screenless&) = delete;
  Screenless& operator=(const Screenless&) = delete;
};

}  // namespace testing_support

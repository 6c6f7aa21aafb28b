// Draws what Dear ImGui describes with SDL's renderer, and passes the input on to it.
#pragma once

#include <SDL.h>
#include <imgui.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace simulator::live {

using Texture = std::unique_ptr<SDL_Texture, void (*)(SDL_Texture*)>;

/// A window and what is drawn in it. [main-thread]
class Canvas {
 public:
  /// Opens a window of this size in pixels. Throws `std::runtime_error` with one line if it cannot.
  Canvas(const char* title, int width, int height);
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  /// Takes the mouse and the keys of the window.
  void take(const SDL_Event& event);

  /// Begins a picture; `seconds`: the time since the last one, more than 0.
  void begin(double seconds);

  /// Shows what was described since `begin`.
  void end();

  /// A texture of 32-bit pixels: red, green, blue, opacity. Throws
  /// `std::runtime_error`.
  Texture makeTexture(int width, int height, bool isOpaque);

  /// The window as it was drawn last, as the bytes of a PNG file. Throws `std::runtime_error` with
  /// one line.
  std::string picture() const;

  ImVec2 size() const;

  ImFont* plain() const { return plain_; }
  ImFont* strong() const { return strong_; }
  ImFont* large() const { return large_; }
  ImFont* fixed() const { return fixed_; }  ///< all letters as wide as each other

 private:
  SDL_RendererInfo createRenderer(std::uint32_t flags);
  void loadFonts();
  void draw(const ImDrawList& list);
  void draw(const ImDrawList& list, const ImDrawCmd& command);

  std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window_{nullptr, SDL_DestroyWindow};
  std::unique_ptr<SDL_Renderer, void (*)(SDL_Renderer*)> renderer_{nullptr, SDL_DestroyRenderer};
  Texture fontTexture_{nullptr, SDL_DestroyTexture};
  ImFont* plain_ = nullptr;
  ImFont* strong_ = nullptr;
  ImFont* large_ = nullptr;
  ImFont* fixed_ = nullptr;
  bool isSoftware_ = false;              ///< whether the processor draws
  std::array<bool, 3> isPressed_ = {};   ///< the mouse's buttons: left, right, middle
  std::array<bool, 3> wasPressed_ = {};  ///< at any time since the last picture
};

}  // namespace simulator::live

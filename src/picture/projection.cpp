#include "picture/projection.h"

namespace Kessel {

Projection::Projection(View view) {
  constexpr double A = 0.70710678118654752;  // 1 / sqrt(2)
  constexpr double B = 0.40824829046386302;  // 1 / sqrt(6)
  constexpr double C = 0.57735026918962576;  // 1 / sqrt(3)
  switch (view) {
    case View::front:
      right_ = {1, 0, 0};
      up_ = {0, 0, 1};
      near_ = {0, -1, 0};
      break;
    case View::top:
      right_ = {1, 0, 0};
      up_ = {0, 1, 0};
      near_ = {0, 0, 1};
      break;
    case View::right:
      right_ = {0, 1, 0};
      up_ = {0, 0, 1};
      near_ = {1, 0, 0};
      break;
    case View::isometric:
      right_ = {A, A, 0};
      up_ = {-B, B, 2 * B};
      near_ = {C, -C, C};
      break;
  }
}

}  // namespace Kessel

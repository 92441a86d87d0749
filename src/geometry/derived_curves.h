// Curves that are made of others (ISO 10303-42).
#pragma once

#include "geometry/curve.h"
#include "geometry/transformation.h"

namespace Kessel::Geometry {

/// A part of a curve. Its parameter counts from its beginning.
class TrimmedCurve final : public Curve {
 public:
  /// What `basis` has from `from` to `to`, which is larger; the other way round where
  /// `is_reversed`.
  TrimmedCurve(CurvePointer basis, double from, double to, bool is_reversed)
      : basis_(std::move(basis)), from_(from), to_(to), is_reversed_(is_reversed) {}

  Vector at(double t) const override { return basis_->at(of_basis(t)); }
  double begin() const override { return 0; }
  double end() const override { return to_ - from_; }
  double period() const override;
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  double of_basis(double t) const;

  CurvePointer basis_;
  double from_;
  double to_;
  bool is_reversed_;
};

/// A curve at another place.
class MovedCurve final : public Curve {
 public:
  MovedCurve(CurvePointer basis, const Frame& frame)
      : basis_(std::move(basis)), frame_(frame), back_(inverse(frame)) {}

  Vector at(double t) const override { return frame_.point(basis_->at(t)); }
  double begin() const override { return basis_->begin(); }
  double end() const override { return basis_->end(); }
  double period() const override { return basis_->period(); }
  double nearest(const Vector& point) const override { return basis_->nearest(back_.point(point)); }
  double parameter_unit(double angle) const override { return basis_->parameter_unit(angle); }
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  CurvePointer basis_;
  Frame frame_;
  Frame back_;
};

/// A curve beside another one: at a distance across its tangent and a fixed direction.
class OffsetCurve final : public Curve {
 public:
  OffsetCurve(CurvePointer basis, double offset, const Vector& across)
      : basis_(std::move(basis)), offset_(offset), across_(unit(across)) {}

  Vector at(double t) const override;
  double begin() const override { return basis_->begin(); }
  double end() const override { return basis_->end(); }
  double period() const override { return basis_->period(); }
  double nearest(const Vector& point) const override;
  double parameter_unit(double angle) const override { return basis_->parameter_unit(angle); }
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  Vector tangent(double t) const;

  CurvePointer basis_;
  double offset_;
  Vector across_;
};

}  // namespace Kessel::Geometry

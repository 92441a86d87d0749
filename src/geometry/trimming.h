// Trims curves (ISO 10303-42, trimmed_curve).
#pragma once

#include "geometry/attributes.h"
#include "geometry/curve_reader.h"

namespace Kessel::Geometry {

/// The part of `basis` that the record with the attributes `trimmed` has: basis, from, to, whether
/// it goes along with it, and what counts where a parameter and a point are given.
///
/// Where both are given and differ, the point counts whatever the file says: of the two, the
/// parameter is what systems get wrong, by the unit of angles above all.
CurvePointer trim(const CurveReading& reading, CurvePointer basis, const Attributes& trimmed);

}  // namespace Kessel::Geometry

// What a host can choose about a split.
#pragma once

namespace Kessel {

/// What an assembly's file holds.
enum class AssemblyStyle {
  /// One file for the whole structure, the root's: it holds every definition and usage, and a
  /// reference to every leaf part's file. Where a component's solid hangs on its shape by a shape
  /// representation relationship, the root repeats it. A sub-assembly's file has no data.
  classic,
  /// The same, but an assembly's file holds no geometry that a leaf part's file holds.
  lean,
  /// Each assembly's file is an assembly that opens by itself: its own definition and bodies, the
  /// usages that start from it, and of its direct components the definition, shape and placements,
  /// with a reference to each component's file, be that a part or a sub-assembly.
  nested,
};

/// Choices for one run.
struct Options {
  AssemblyStyle assemblies = AssemblyStyle::classic;
};

}  // namespace Kessel

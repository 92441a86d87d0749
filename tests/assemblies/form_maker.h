// Makes exchange files of small assemblies whose parts are boxes that a CAD kernel can read, record
// by record: for forms that no system here writes.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace Kessel::test {

/// A record's name, "#12"; the parameters of others.
using Ref = std::string;

/// "(a,b)"
std::string list_of(const std::vector<Ref>& refs);

/// What a product is made of, as far as a form needs to name it.
struct FormProduct {
  Ref product, formation, definition, shape;
  Ref axis;            ///< an item of the representation, from which usages place it
  Ref representation;  ///< the one that the shape names
  Ref bodies;          ///< the one that holds the bodies: the same, or one tied to it
  Ref solid;
  std::vector<Ref> faces;
  std::vector<Ref> items;  ///< of an assembly's representation, which is written in the end
  bool is_assembly = false;
};

struct FormUsage {
  Ref usage, shape, placement, relationship, axis;
};

class FormMaker {
 public:
  /// `schema` is "203", "214" or "242".
  explicit FormMaker(const std::string& schema = "214");

  Ref add(const std::string& body);
  /// A context in which lengths have that unit; what is made from then on is said in it.
  Ref begin_context(const Ref& length);
  const Ref& context() const { return context_; }
  const Ref& definition_context() const { return definition_context_; }
  /// Words the record `name` anew.
  void replace(const Ref& name, const std::string& body);

  Ref point(double x, double y, double z);
  Ref axis(double x = 0, double y = 0, double z = 0);
  Ref shell(const std::array<double, 3>& size, double x = 0, bool is_closed = true);
  /// A solid from (x,0,0) on; `faces`, if any, gets its faces.
  Ref box(const std::array<double, 3>& size, double x = 0, std::vector<Ref>* faces = nullptr);

  /// The product alone, with a shape that no representation shows yet.
  FormProduct product(const std::string& name, const Ref& formation = {});
  /// A part of one box with that axis, in a representation that its shape names.
  FormProduct part(const std::string& name, const std::array<double, 3>& size = {10, 10, 10},
                   const Ref& axis = {});
  /// The same in a representation that is tied to the one that its shape names.
  FormProduct tied_part(const std::string& name, const Ref& axis = {},
                        const Ref& axis_of_bodies = {});
  FormProduct assembly(const std::string& name, const Ref& axis = {});
  /// An assembly is finished when no more items come.
  void finish(const FormProduct& assembly);

  Ref representation(const std::vector<Ref>& items,
                     const std::string& kind = "ADVANCED_BREP_SHAPE_REPRESENTATION");
  Ref link(const Ref& shape, const Ref& representation);
  Ref tie(const Ref& a, const Ref& b);
  Ref mapped(const FormProduct& of, double x);

  Ref bare_usage(const FormProduct& assembly, const FormProduct& component);
  /// Places the component's axis at that point; `shown` is the representation that the place is
  /// said of, the component's own where empty.
  FormUsage use(FormProduct& assembly, const FormProduct& component, double x, double y = 0,
                double z = 0, const Ref& shown = {});

  Ref colour(double red, double green, double blue);
  Ref style(const Ref& colour);
  Ref styled(const Ref& colour, const Ref& item);
  void present(const std::vector<Ref>& styled);

  /// The file.
  std::string text() const;

 private:
  std::string schema_;
  std::vector<std::string> bodies_;
  int usages_ = 0;
  Ref application_, product_context_, definition_context_, context_, angle_, solid_angle_, x_, z_;
};

/// A form of an assembly: what real systems write, or may.
struct AssemblyForm {
  std::string name;
  std::function<std::string()> text;
  /// Where the kernel itself misreads the form: another one that it reads as this one is meant.
  std::function<std::string()> meant = {};
};

/// All of them.
std::vector<AssemblyForm> assembly_forms();

}  // namespace Kessel::test

#include "assemblies/nest.h"

namespace Kessel::test {

Nest make_nest(FormMaker& form) {
  Nest nest;
  nest.root = form.assembly("root");
  nest.sub = form.assembly("sub");
  nest.one = form.part("one");
  nest.two = form.part("two", {5, 6, 7});
  return nest;
}

NestUsages place_all(FormMaker& form, Nest& nest) {
  NestUsages usages;
  usages.sub = form.use(nest.root, nest.sub, 100, 50);
  usages.one = form.use(nest.root, nest.one, 4);
  usages.sub_one = form.use(nest.sub, nest.one, 30);
  usages.sub_two = form.use(nest.sub, nest.two, 60, 1, 1);
  return usages;
}

void finish_coloured(FormMaker& form, const Nest& nest) {
  form.finish(nest.root);
  form.finish(nest.sub);
  form.present({form.styled(form.colour(1, 0, 0), nest.one.solid),
                form.styled(form.colour(1, 1, 0), nest.one.faces.at(2)),
                form.styled(form.colour(0, 0, 1), nest.two.solid)});
}

}  // namespace Kessel::test

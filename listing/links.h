// Which references become links.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstdint>

#include "listing/module_targets.h"
#include "listing/targets.h"
#include "vb/project.h"

namespace tintline::listing {

// What a call can lead to.
inline bool isCallable(vb::DeclarationKind kind) {
  return isProcedure(kind) || kind == vb::DeclarationKind::Declare ||
         kind == vb::DeclarationKind::Event;
}

// Whether the options want a link for a reference of module `own`, and what it means can be led
// to at all: parameters and locals cannot, nor what is not shown.
inline bool isLink(const vb::Reference& reference, std::uint32_t own, const Options& options,
                   const Targets& targets) {
  if (options.links == Links::None) return false;
  if (reference.module != own && options.links != Links::All) return false;
  const bool proceduresOnly = options.links == Links::Procedures;
  if (reference.declaration == vb::kNone) return !proceduresOnly;
  const ModuleTargets& target = targets[reference.module];
  return target.isShown(reference.declaration) && !target.id(reference.declaration).empty() &&
         (!proceduresOnly || isCallable(target.kind(reference.declaration)));
}

}  // namespace tintline::listing

#pragma once

#include <string>
#include <vector>

#include "api/routes.h"
#include "automation/profile_change.h"
#include "automation/profile_switch.h"
#include "base/task.h"
#include "core/module1.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"

namespace homewarden {

// GET /profiles and PUT /profiles/active.
class ProfileRoutes {
 public:
  ProfileRoutes(Routes& routes, const ProfilePanel& panel, const Flags& flags, Module1& module1,
                const ProfileSwitch& profiles, ProfileChange& change);

 private:
  std::vector<std::string> names() const;
  Json json() const;
  Task<Routes::Result> list(ApiCall call);
  Task<Routes::Result> choose(ApiCall call);

  const ProfilePanel& panel_;
  const Flags& flags_;
  Module1& module1_;
  const ProfileSwitch& profiles_;
  ProfileChange& change_;
};

}  // namespace homewarden

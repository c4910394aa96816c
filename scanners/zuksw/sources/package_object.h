#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "scanners/shared/packages/package.h"
#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/versions/compare.h"

namespace zuksw {

/** An installed package. */
class PackageObject : public Object {
  public:
    PackageObject(Package package, std::string group)
        : package_(std::move(package)), group_(std::move(group)) {}

    const Package& package() const { return package_; }
    Text property(std::string_view name, Machine& machine) const override;
    std::string identity() const override;

  private:
    std::string purl(Machine& machine) const;

    Package package_;
    std::string group_;  // the namespace of a Maven artifact
};

/** How the versions of a manager compare. */
Scheme schemeOfManager(std::string_view manager);

/** Text as one part of a package URL. */
std::string percentEncode(std::string_view text);

}  // namespace zuksw

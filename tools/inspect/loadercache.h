// The cache of the system's loader: where the libraries of the configured folders stand.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace inspect {

class LoaderCache {
  public:
    /// Reads the cache; one that isn't there or is of an unknown kind has nothing.
    explicit LoaderCache(const std::string& path = "/etc/ld.so.cache");

    /// The files that the cache has for a library's name, in its order; those for other
    /// architectures are among them.
    const std::vector<std::string>& filesOf(const std::string& name) const;

  private:
    std::unordered_map<std::string, std::vector<std::string>> files;
};

}  // namespace inspect

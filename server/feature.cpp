#include "server/feature.h"

#include <string>
#include <vector>

namespace rux::server {

const std::vector<Feature>& Features() {
  static const std::vector<Feature> features = {
#define FEATURE(name) name(),
#include "server/features.def"
  };
  return features;
}

const RequestRow* FindRequest(const std::string& method) {
  for (const Feature& feature : Features()) {
    for (const RequestRow& request : feature.requests) {
      if (method == request.method) return &request;
    }
  }
  return nullptr;
}

}  // namespace rux::server

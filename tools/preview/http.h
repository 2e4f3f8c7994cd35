// Requests of browsers, as far as one page needs them.
#pragma once

#include <map>
#include <string>

namespace zel {

struct HttpRequest {
  std::string method, target;
  std::map<std::string, std::string> headers;  // names in small letters
  std::string body;

  // Empty for a header that it does not have.
  const std::string& Header(const std::string& name) const;
};

enum class HttpState { kIncomplete, kComplete, kWrong };

// Takes the first request off the bytes that have come. A wrong one is none, or has a head or a
// body that is larger than this page's.
HttpState TakeRequest(std::string& bytes, HttpRequest& request);

// An answer that no other page may use and nobody keeps. The type is empty for one without content.
// Further headers end in line breaks each.
std::string HttpAnswer(const std::string& status, const std::string& type,
                       const std::string& content, const std::string& headers = {});

}  // namespace zel

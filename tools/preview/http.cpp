#include "tools/preview/http.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>

namespace zel {
namespace {

constexpr std::size_t kLongestHead = 1 << 14, kLongestBody = 1 << 14;
constexpr std::size_t kMostDigits = 6;

bool ReadHead(const std::string& head, HttpRequest& request) {
  std::istringstream lines{head};
  std::string line, version;
  std::getline(lines, line);
  std::istringstream words{line};
  words >> request.method >> request.target >> version;
  if (!version.starts_with("HTTP/1.")) return false;
  while (std::getline(lines, line)) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos || colon == 0) return false;
    std::string name = line.substr(0, colon);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const std::size_t start = line.find_first_not_of(" \t", colon + 1);
    const std::size_t end = line.find_last_not_of(" \t\r");
    std::string value =
        start == std::string::npos || start > end ? "" : line.substr(start, end + 1 - start);
    // Said twice it could mean either.
    if (!request.headers.emplace(name, value).second) return false;
  }
  return request.Header("transfer-encoding").empty();
}

}  // namespace

const std::string& HttpRequest::Header(const std::string& name) const {
  static const std::string kNone;
  const auto found = headers.find(name);
  return found == headers.end() ? kNone : found->second;
}

HttpState TakeRequest(std::string& bytes, HttpRequest& request) {
  const std::size_t end = bytes.find("\r\n\r\n");
  if (std::min(end, bytes.size()) > kLongestHead) return HttpState::kWrong;
  if (end == std::string::npos) return HttpState::kIncomplete;
  request = {};
  if (!ReadHead(bytes.substr(0, end), request)) return HttpState::kWrong;
  const std::string& said = request.Header("content-length");
  const bool isNumber =
      said.size() <= kMostDigits &&
      std::all_of(said.begin(), said.end(), [](unsigned char c) { return std::isdigit(c); });
  const auto length = isNumber ? std::strtoul(said.c_str(), nullptr, 10) : kLongestBody + 1;
  if (length > kLongestBody) return HttpState::kWrong;
  const std::size_t start = end + 4;
  if (bytes.size() - start < length) return HttpState::kIncomplete;
  request.body = bytes.substr(start, length);
  bytes.erase(0, start + length);
  return HttpState::kComplete;
}

std::string HttpAnswer(const std::string& status, const std::string& type,
                       const std::string& content, const std::string& headers) {
  std::string answer =
      "HTTP/1.1 " + status +
      "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
      "Cross-Origin-Resource-Policy: same-origin\r\nReferrer-Policy: no-referrer\r\n";
  answer += headers;
  if (!type.empty()) answer += "Content-Type: " + type + "\r\n";
  if (type != "text/event-stream" && !status.starts_with("204"))
    answer += "Content-Length: " + std::to_string(content.size()) + "\r\n";
  return answer + "\r\n" + content;
}

}  // namespace zel

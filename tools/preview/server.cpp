#include "tools/preview/server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <png.h>
#include <poll.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <vector>

#include "launcher/language.h"
#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "tools/preview/markup.h"
#include "tools/preview/options.h"

namespace zel {
namespace {

constexpr std::size_t kMostConnections = 32;
constexpr const char* kPage =
#include "live.html.inc"
    ;

std::string NewSecret() {
  unsigned char bytes[16];
  if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes) std::abort();
  std::string secret;
  for (const unsigned char byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", byte);
    secret += digits;
  }
  return secret;
}

// Takes as long whichever letters differ.
bool IsSame(const std::string& a, const std::string& b) {
  unsigned differ = a.size() != b.size();
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    differ |= static_cast<unsigned char>(a[i] ^ b[i]);
  return differ == 0;
}

std::string AsPng(const std::string& pixels, Size size) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.format = PNG_FORMAT_RGB;
  image.flags = PNG_IMAGE_FLAG_FAST;
  image.width = static_cast<png_uint_32>(size.w);
  image.height = static_cast<png_uint_32>(size.h);
  png_alloc_size_t bytes = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::string png(bytes, '\0');
  if (!png_image_write_to_memory(&image, png.data(), &bytes, 0, pixels.data(), 0, nullptr))
    return {};
  png.resize(bytes);
  return png;
}

std::string Option(const std::string& value, bool isChosen) {
  const std::string shown = HtmlText(Sound(value, U_UTF8));
  return "<option value=\"" + shown + '"' + (isChosen ? " selected>" : ">") +
         (value.empty() ? "as set" : shown) + "</option>";
}

void Replace(std::string& text, const std::string& place, const std::string& value) {
  for (std::size_t at = 0; (at = text.find(place, at)) != std::string::npos; at += value.size())
    text.replace(at, place.size(), value);
}

// Those that the menu has a layout for.
std::vector<std::string> SizesOfMenu() {
  constexpr std::size_t kMost = 100;
  std::vector<std::string> sizes;
  const SectionFile menu = SectionFile::FromUtf8(ReadWhole(kMainMenu));
  for (const SectionFile::Section& section : menu.Sections())
    if (Size size; sizes.size() < kMost && ReadSectionSize(section.Name(), &size))
      sizes.push_back(std::to_string(size.w) + 'x' + std::to_string(size.h));
  return sizes;
}

}  // namespace

Server::Server(PollLoop& loop, Live& live, int port)
    : loop_{loop}, live_{live}, secret_{NewSecret()} {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const int yes = 1;
  setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  constexpr int kWaiting = 16;
  if (bind(listener_, plain, length) != 0 || listen(listener_, kWaiting) != 0 ||
      getsockname(listener_, plain, &length) != 0)
    return;
  port_ = ntohs(address.sin_port);
  loop_.Watch(listener_, POLLIN, [this] { Accept(); });
  live_.onChange = [this] { TellAll(); };
}

Server::~Server() {
  live_.onChange = nullptr;
  while (!connections_.empty()) Drop(connections_.begin()->first);
  loop_.Forget(listener_);
  close(listener_);
}

std::string Server::Address() const {
  if (port_ == 0) return {};
  return "http://127.0.0.1:" + std::to_string(port_) + '/' + secret_ + '/';
}

void Server::Accept() {
  const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (descriptor < 0) return;
  if (connections_.size() >= kMostConnections) {
    // One that says nothing has to go.
    const auto idle = std::find_if(connections_.begin(), connections_.end(),
                                   [](const auto& row) { return !row.second.isStream; });
    Drop(idle == connections_.end() ? connections_.begin()->first : idle->first);
  }
  connections_[descriptor] = {};
  Watch(descriptor);
}

void Server::Drop(int descriptor) {
  loop_.Forget(descriptor);
  connections_.erase(descriptor);
  close(descriptor);
}

void Server::Watch(int descriptor) {
  // Who does not read is not read from either: what it says would pile up.
  const bool writes = !connections_[descriptor].out.empty();
  loop_.Watch(descriptor, static_cast<short>(writes ? POLLOUT : POLLIN),
              [this, descriptor] { Serve(descriptor); });
}

void Server::Serve(int descriptor) {
  Connection& connection = connections_[descriptor];
  if (connection.out.empty()) {
    char block[1 << 14];
    const ssize_t count = recv(descriptor, block, sizeof block, MSG_DONTWAIT);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return Drop(descriptor);
    if (count > 0) connection.in.append(block, static_cast<std::size_t>(count));
  }
  // One answer after the other.
  while (PrepareAnswer(connection)) {
    const ssize_t sent =
        send(descriptor, connection.out.data(), connection.out.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) return Drop(descriptor);
    if (sent > 0) connection.out.erase(0, static_cast<std::size_t>(sent));
    if (!connection.out.empty()) break;
    if (connection.endsAfter) return Drop(descriptor);
  }
  Watch(descriptor);
}

// False when there is nothing to be said.
bool Server::PrepareAnswer(Connection& connection) {
  if (!connection.out.empty()) return true;
  if (connection.isStream) {
    connection.in.clear();
    connection.out = Events(connection);  // what has changed meanwhile
    return !connection.out.empty();
  }
  HttpRequest request;
  const HttpState state = TakeRequest(connection.in, request);
  if (state == HttpState::kIncomplete) return false;
  connection.endsAfter = state == HttpState::kWrong;
  connection.out = connection.endsAfter
                       ? HttpAnswer("400 Bad Request", "", "", "Connection: close\r\n")
                       : Answer(request, connection);
  return true;
}

void Server::TellAll() {
  std::vector<int> streams;
  for (const auto& [descriptor, connection] : connections_)
    if (connection.isStream && connection.out.empty()) streams.push_back(descriptor);
  for (const int descriptor : streams)
    if (connections_.count(descriptor)) Serve(descriptor);
}

std::string Server::Answer(const HttpRequest& request, Connection& connection) {
  const std::string port = ':' + std::to_string(port_);
  const std::string host = request.Header("host"), origin = request.Header("origin");
  const std::string site = request.Header("sec-fetch-site");
  const bool isHere = host == "127.0.0.1" + port || host == "localhost" + port;
  const bool isOurs = (origin.empty() || origin == "http://" + host) &&
                      (site.empty() || site == "same-origin" || site == "none");
  if (!isHere || !isOurs) return HttpAnswer("403 Forbidden", "", "");
  const std::string& target = request.target;
  const std::size_t start = secret_.size() + 2;
  // As people copy it.
  if (IsSame(target, '/' + secret_))
    return HttpAnswer("308 Permanent Redirect", "", "", "Location: " + target + "/\r\n");
  if (target.size() < start || !IsSame(target.substr(0, start), '/' + secret_ + '/'))
    return HttpAnswer("404 Not Found", "", "");
  const std::string name = target.substr(start, target.find('?', start) - start);
  if (request.method == "POST")
    return origin.empty() ? HttpAnswer("403 Forbidden", "", "") : AnswerPost(name, request.body);
  if (request.method != "GET")
    return HttpAnswer("405 Method Not Allowed", "", "", "Allow: GET, POST\r\n");
  if (name.empty())
    return HttpAnswer("200 OK", "text/html; charset=utf-8", Page(),
                      "Content-Security-Policy: default-src 'none'; connect-src 'self'; "
                      "img-src 'self'; style-src 'nonce-" +
                          secret_ + "'; script-src 'nonce-" + secret_ +
                          "'; base-uri 'none'; form-action 'none'; "
                          "frame-ancestors 'none'\r\n");
  if (name == "picture" && live_.FrameNumber() > 0)
    return HttpAnswer("200 OK", "image/png", Picture());
  if (name != "events") return HttpAnswer("404 Not Found", "", "");
  connection.isStream = true;
  return HttpAnswer("200 OK", "text/event-stream", "");
}

std::string Server::AnswerPost(const std::string& name, const std::string& body) {
  std::istringstream lines{body};
  bool isRight = true;
  if (name == "input") {
    for (std::string line; std::getline(lines, line);) live_.Act(line);
  } else if (name == "begin") {
    live_.Begin();
  } else if (name == "change") {
    std::string what, value;
    lines >> what >> std::ws;
    std::getline(lines, value);
    isRight = live_.Change(what, value);
  } else {
    return HttpAnswer("404 Not Found", "", "");
  }
  return HttpAnswer(isRight ? "204 No Content" : "400 Bad Request", "", "");
}

std::string Server::News() const {
  const Live::Choice* choice = live_.LastChoice();
  const auto text = [](const std::string& bytes) { return JsonText(Sound(bytes, U_UTF8)); };
  return "{\"complaint\":" + text(live_.Complaint()) + ",\"choice\":" +
         (choice ? "{\"status\":" + text(choice->status) + ",\"position\":" +
                       text(choice->position) + ",\"string\":" + text(choice->text) + "}"
                 : "null") +
         ",\"looks\":" + text(Looks()) + ",\"findings\":" + live_.Findings() + "}";
}

std::string Server::Events(Connection& connection) const {
  std::string events;
  if (connection.news != live_.NewsNumber()) events += "event: news\ndata: " + News() + "\n\n";
  if (connection.frame != live_.FrameNumber())
    events += "event: frame\ndata: " + std::to_string(live_.FrameNumber()) + "\n\n";
  connection.news = live_.NewsNumber();
  connection.frame = live_.FrameNumber();
  return events;
}

std::string Server::Looks() const {
  const std::string& chosen = live_.CurrentScene().look;
  std::string looks = Option("", chosen.empty());
  for (const std::string& look : live_.Looks()) looks += Option(look, look == chosen);
  return looks;
}

std::string Server::Page() const {
  const Scene& scene = live_.CurrentScene();
  std::string languages = Option("", !scene.language), sizes, depths;
  for (const LanguageRow& row : Languages())
    languages += Option(row.code, scene.language && std::strcmp(scene.language, row.code) == 0);
  const std::string size =
      scene.size.w ? std::to_string(scene.size.w) + 'x' + std::to_string(scene.size.h) : "";
  std::vector<std::string> known{"", "640x480", "800x600", "1024x768", "1280x800", "1920x1080"};
  std::vector<std::string> own = SizesOfMenu();
  own.push_back(size);
  for (const std::string& each : own)
    if (std::find(known.begin(), known.end(), each) == known.end()) known.push_back(each);
  for (const std::string& each : known) sizes += Option(each, each == size);
  for (const int depth : {0, 8, 15, 16, 24, 32})
    depths += Option(depth ? std::to_string(depth) : "", depth == scene.depth);
  std::string zooms;
  std::ostringstream number;
  if (scene.zoom) number << *scene.zoom;
  const std::string zoom = scene.zoom == kZoomToFit ? "auto" : number.str();
  std::vector<std::string> usual{"", "auto", "1", "1.5", "2", "3"};
  if (std::find(usual.begin(), usual.end(), zoom) == usual.end()) usual.push_back(zoom);
  for (const std::string& each : usual) zooms += Option(each, each == zoom);
  std::string page = kPage;
  Replace(page, "@NONCE@", secret_);
  Replace(page, "@LANGUAGES@", languages);
  Replace(page, "@SIZES@", sizes);
  Replace(page, "@DEPTHS@", depths);
  Replace(page, "@ZOOMS@", zooms);
  Replace(page, "@LOOKS@", Looks());
  return page;
}

const std::string& Server::Picture() {
  if (pictureNumber_ != live_.FrameNumber()) picture_ = AsPng(live_.Pixels(), live_.FrameSize());
  pictureNumber_ = live_.FrameNumber();
  return picture_;
}

int ServePage(const std::string& directory, const Scene& scene, Scratch& scratch, int port) {
  PollLoop::CatchSignals();
  set_uformat(U_UTF8);
  PollLoop loop;
  Live live{loop, directory, scene, scratch};
  const Server server{loop, live, port};
  if (server.Address().empty()) {
    std::fprintf(stderr, "zel-preview: --serve=%d: %s\n", port, std::strerror(errno));
    return kFailedStatus;
  }
  std::printf("%s\n", server.Address().c_str());
  std::fflush(stdout);
  while (!PollLoop::IsOver()) loop.Pass(-1);
  return EXIT_SUCCESS;
}

}  // namespace zel

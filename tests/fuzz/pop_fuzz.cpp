#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include "platform/pop/pop_kit.h"

namespace velmora::test {
namespace {

/// Says the same bytes over each connection, whatever it hears, and then hangs up or falls silent.
class DeafPeer : public MemoryPeer {
 public:
  DeafPeer(std::string_view script, bool hangsUp) : script_(script), hangsUp_(hangsUp) {}
  std::string opened() override { return std::string(script_); }
  std::string heard(std::string_view /*bytes*/) override { return {}; }
  bool hangsUp() const override { return hangsUp_; }

 private:
  std::string_view script_;
  bool hangsUp_;
};

/// Only the documented failures may leave a client. Returns whether there was none.
bool works(const std::function<void()>& call) {
  try {
    call();
    return true;
  } catch (const PopFailure&) {
    return false;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

/// The first byte sets the chunks, the end of the line and the stages; the others are what the server says.
void session(std::uint8_t setting, std::string_view script) {
  MemoryLine line;
  line.chunk = (setting & 1U) != 0 ? 3 : 4096;
  DeafPeer peer(script, (setting & 2U) != 0);
  Desk desk;
  const auto client = desk.makeClient(line, peer);
  if (!works([&] { client->Connect(); })) return;
  PopMessages& messages = client->Messages();
  if ((setting & 4U) != 0) works([&] { messages.ListMessages(); });
  if ((setting & 8U) != 0) works([&] { messages.FetchAll(); });
  if ((setting & 32U) != 0)
    works([&] { messages.FetchOriginal(0, [](std::string_view bytes) { return !bytes.empty(); }); });
  if ((setting & 16U) != 0) works([&] { messages.Item(0).Deleted = true; });
  const bool marked = (setting & 16U) != 0;
  if (!works([&] { client->Disconnect(); }) && !marked) std::abort();
  if (!works([&] { client->Disconnect(); })) std::abort();
  if (line.open) std::abort();
}

}  // namespace
}  // namespace velmora::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string script(data + 1, data + size);
  velmora::test::session(data[0], script);
  return 0;
}

// The probe's view of the display's pixels.
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>
#include <thread>

#include "Desktop.h"

namespace probe {

namespace {
// Room for one picture of the largest display that the tests use.
constexpr std::size_t kMemorySize = std::size_t{3840} * 2160 * 4;
}  // namespace

void Desktop::attachSharedMemory() {
  const int id = shmget(IPC_PRIVATE, kMemorySize, IPC_CREAT | 0600);
  if (id < 0) return;
  void* memory = shmat(id, nullptr, 0);
  if (memory != reinterpret_cast<void*>(-1)) {
    segment_ = xcb_generate_id(connection_);
    Reply<xcb_generic_error_t> error(xcb_request_check(
        connection_,
        xcb_shm_attach_checked(connection_, segment_, static_cast<std::uint32_t>(id), 0)));
    if (error) {
      shmdt(memory);
    } else {
      memory_ = static_cast<std::uint32_t*>(memory);
    }
  }
  // Marked at once: it goes away with the two attachments, even after a crash.
  shmctl(id, IPC_RMID, nullptr);
}

Picture Desktop::picture(const Area& area) {
  const std::size_t count = std::size_t{area.width} * area.height;
  Picture result(count);
  if (memory_ && count * 4 <= kMemorySize) {
    Reply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
        connection_,
        xcb_shm_get_image(connection_, root(), area.x, area.y, area.width, area.height, ~0U,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0),
        nullptr));
    if (reply) std::memcpy(result.data(), memory_, count * 4);
    return reply ? result : Picture{};
  }
  Reply<xcb_get_image_reply_t> reply(
      xcb_get_image_reply(connection_,
                          xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), area.x,
                                        area.y, area.width, area.height, ~0U),
                          nullptr));
  if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < count * 4) {
    return {};
  }
  std::memcpy(result.data(), xcb_get_image_data(reply.get()), count * 4);
  return result;
}

std::optional<Clock::time_point> Desktop::waitForChange(const Area& area, const Picture& before,
                                                        Seconds timeout, Seconds rest) {
  const auto deadline = Clock::now() + timeout;
  do {
    if (picture(area) != before) return Clock::now();
    std::this_thread::sleep_for(rest);
  } while (Clock::now() < deadline);
  return std::nullopt;
}

}  // namespace probe

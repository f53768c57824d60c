// Puts the questions of all sessions to the storage on two threads of its own, so that no session waits for
// another one's disk, and brings the answers back to the sessions' thread.
#pragma once

#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/thread_pool.hpp>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "server/Storage.h"

namespace inspector::server {

// What a device was offered and has not fetched yet: the keys of all of it, and the replies of the next few.
struct Offer {
  std::vector<Storage::Key> keys;
  std::size_t nextKey = 0;  // the first whose replies have not been read
  std::vector<InspectionReplies> replies;
  std::size_t nextReplies = 0;
};

// Answers come on the thread that runs `sessions`, also after a fault. Destroyed, it finishes what it was
// given; answers that nobody runs any more are dropped.
class StorageDesk {
public:
  StorageDesk(Storage& storage, asio::io_context& sessions) : m_Storage(storage), m_Sessions(sessions) {}
  ~StorageDesk();

  using Answer = std::function<void(const Fault&)>;

  void FindUser(std::string name, std::function<void(const Fault&, std::optional<User>)> answer);
  void NoteLogin(std::string name, bool succeeded, device::CalendarTime when, Answer answer);

  using OfferAnswer = std::function<void(const Fault&, Offer)>;
  void FindOffer(std::string office, std::optional<DayRange> days, OfferAnswer answer);
  void ReadOn(Offer offer, OfferAnswer answer);

  // Those that arrive while others are being synced share the next commit.
  void Store(Push push, Answer answer);

private:
  Fault Fetch(Offer& offer) const;
  void StoreWaiting();

  Storage& m_Storage;
  asio::io_context& m_Sessions;
  std::mutex m_Mutex;
  std::vector<Push> m_WaitingPushes;
  std::vector<Answer> m_WaitingAnswers;  // one for each
  asio::thread_pool m_Readers{1};
  asio::thread_pool m_Writers{1};
};

}  // namespace inspector::server

#include "server/StorageDesk.h"

#include <algorithm>

namespace inspector::server {
namespace {

// Of the inspections that are read ahead for one session; one alone may be longer.
constexpr std::size_t kReadAhead = 8 * 1024;  // characters
constexpr std::size_t kInspectionsAhead = 32;

}  // namespace

StorageDesk::~StorageDesk() {
  m_Readers.join();
  m_Writers.join();
}

void StorageDesk::FindUser(std::string name, std::function<void(const Fault&, std::optional<User>)> answer) {
  asio::post(m_Readers, [this, name = std::move(name), answer = std::move(answer)]() mutable {
    std::optional<User> user;
    Fault fault = m_Storage.FindUser(name, user);
    asio::post(m_Sessions, [answer = std::move(answer), fault = std::move(fault),
                            user = std::move(user)]() mutable { answer(fault, std::move(user)); });
  });
}

void StorageDesk::NoteLogin(std::string name, bool succeeded, device::CalendarTime when, Answer answer) {
  asio::post(
      m_Writers, [this, name = std::move(name), succeeded, when, answer = std::move(answer)]() mutable {
        Fault fault = m_Storage.NoteLogin(name, succeeded, when);
        asio::post(m_Sessions, [answer = std::move(answer), fault = std::move(fault)] { answer(fault); });
      });
}

void StorageDesk::FindOffer(std::string office, std::optional<DayRange> days, OfferAnswer answer) {
  asio::post(m_Readers, [this, office = std::move(office), days, answer = std::move(answer)]() mutable {
    Offer offer;
    Fault fault = m_Storage.OfferedKeys(office, days, offer.keys);
    offer.keys.shrink_to_fit();
    if (fault.empty()) fault = Fetch(offer);
    asio::post(m_Sessions, [answer = std::move(answer), fault = std::move(fault),
                            offer = std::move(offer)]() mutable { answer(fault, std::move(offer)); });
  });
}

void StorageDesk::ReadOn(Offer offer, OfferAnswer answer) {
  asio::post(m_Readers, [this, offer = std::move(offer), answer = std::move(answer)]() mutable {
    Fault fault = Fetch(offer);
    asio::post(m_Sessions, [answer = std::move(answer), fault = std::move(fault),
                            offer = std::move(offer)]() mutable { answer(fault, std::move(offer)); });
  });
}

Fault StorageDesk::Fetch(Offer& offer) const {
  std::vector<OfficeInspection> inspections;
  const std::size_t most = std::min(offer.keys.size() - offer.nextKey, kInspectionsAhead);
  const std::span keys = std::span(offer.keys).subspan(offer.nextKey, most);
  if (Fault fault = m_Storage.Read(keys, kReadAhead, inspections); !fault.empty()) return fault;
  offer.nextKey += inspections.size();
  offer.replies.clear();
  offer.replies.reserve(inspections.size());
  for (const OfficeInspection& inspection : inspections) offer.replies.push_back(RepliesOf(inspection));
  offer.nextReplies = 0;
  return {};
}

void StorageDesk::Store(Push push, Answer answer) {
  bool isFirst = false;
  {
    const std::lock_guard lock(m_Mutex);
    isFirst = m_WaitingPushes.empty();
    m_WaitingPushes.push_back(std::move(push));
    m_WaitingAnswers.push_back(std::move(answer));
  }
  if (isFirst) asio::post(m_Writers, [this] { StoreWaiting(); });
}

void StorageDesk::StoreWaiting() {
  std::vector<Push> pushes;
  std::vector<Answer> answers;
  {
    const std::lock_guard lock(m_Mutex);
    pushes.swap(m_WaitingPushes);
    answers.swap(m_WaitingAnswers);
  }
  Fault fault = m_Storage.StorePushes(pushes);
  asio::post(m_Sessions, [answers = std::move(answers), fault = std::move(fault)] {
    for (const Answer& answer : answers) answer(fault);
  });
}

}  // namespace inspector::server

#include "server/Session.h"

#include <algorithm>
#include <asio/post.hpp>
#include <asio/write.hpp>

#include "server/Passwords.h"
#include "server/Periods.h"

namespace inspector::server {

using asio::ip::tcp;

namespace {

// Whoever has no password may not keep a place that a device could have. Time in which others' passwords are
// looked at first does not count.
constexpr std::chrono::seconds kStrangerIdle{20};
constexpr std::chrono::seconds kStrangerSession{300};

}  // namespace

Session::Session(tcp::socket socket, std::string address, SessionHost& host, std::function<void()> ended)
    : m_Socket(std::move(socket)), m_Address(std::move(address)), m_Host(host), m_Ended(std::move(ended)) {}

void Session::Drive() {
  using Want = Conversation::Want;
  while (!m_HasEnded) {
    switch (m_Conversation.Next()) {
      case Want::Bytes:
        if (m_IsStopping && m_Conversation.IsAtBorder()) return End("the server stops");
        return Read();
      case Want::Send:
        if (!SendReply()) return;
        break;
      case Want::Login:
        return LogIn();
      case Want::Offers:
        return FindOffer();
      case Want::Inspection:
        if (!GiveNext()) return;
        break;
      case Want::Store:
        return Store();
      case Want::Close:
        if (!m_Conversation.Complaint().empty()) ++m_Host.counters.complaints;
        return End(m_Conversation.Complaint());
    }
  }
}

void Session::Read() {
  m_Silent = Clock::now();
  const std::span<char> space = m_Conversation.Space();
  m_Socket.async_read_some(asio::buffer(space.data(), space.size()), [self = shared_from_this()](
                                                                         const asio::error_code& error,
                                                                         std::size_t count) {
    if (self->m_HasEnded) return;
    if (error) {
      return self->End(error == asio::error::eof ? "the device has closed the connection" : error.message());
    }
    self->m_Silent.reset();
    self->m_Conversation.Received(count);
    self->Drive();
  });
}

bool Session::SendReply() {
  // One send for the whole reply: the device takes for a reply what one receive call returns. There is room
  // for it at once, unless somebody sends commands without reading.
  const std::string_view reply = m_Conversation.Reply();
  asio::error_code error;
  const std::size_t sent = m_Socket.write_some(asio::buffer(reply.data(), reply.size()), error);
  if (!error && sent == reply.size()) {
    m_Conversation.Sent();
    return true;
  }
  if (error && error != asio::error::would_block && error != asio::error::try_again) {
    End(error.message());
    return false;
  }
  m_Silent = Clock::now();
  const std::string_view rest = reply.substr(error ? 0 : sent);
  asio::async_write(m_Socket, asio::buffer(rest.data(), rest.size()),
                    [self = shared_from_this()](const asio::error_code& failure, std::size_t) {
                      if (self->m_HasEnded) return;
                      if (failure) return self->End(failure.message());
                      self->m_Silent.reset();
                      self->m_Conversation.Sent();
                      self->Drive();
                    });
  return false;
}

// --- logging in

void Session::LogIn() {
  const auto when = m_Host.guard.Admit(m_Conversation.Name(), m_Address, Clock::now());
  if (!when) {
    m_Host.log.Warning("login refused, too many attempts wait",
                       {{"user", m_Conversation.Name()}, {"address", m_Address}});
    m_Conversation.LoggedIn(false);
    return asio::post(m_Host.io, [self = shared_from_this()] { self->Drive(); });
  }
  m_LoginTimer = std::make_unique<asio::steady_timer>(m_Host.io, *when);
  m_LoginTimer->async_wait([self = shared_from_this()](const asio::error_code&) {
    self->m_LoginTimer.reset();
    if (self->m_HasEnded) return;
    self->m_Host.desk.FindUser(self->m_Conversation.Name(),
                               [self](const Fault& fault, std::optional<User> user) {
                                 if (self->m_HasEnded) return;
                                 if (!fault.empty()) return self->Fail(fault);
                                 self->CheckPassword(std::move(user));
                               });
  });
}

void Session::CheckPassword(std::optional<User> user) {
  asio::post(m_Host.hashing, [self = shared_from_this(), &host = m_Host, user = std::move(user),
                              password = m_Conversation.Password()]() mutable {
    const bool isPassword = IsPassword(user ? user->passwordHash : host.strangerHash, password) && user;
    asio::post(host.io, [self = std::move(self), user = std::move(user), isPassword] {
      if (!self->m_HasEnded) self->FinishLogin(user, isPassword);
    });
  });
}

void Session::FinishLogin(const std::optional<User>& user, bool isPassword) {
  const std::string& name = m_Conversation.Name();
  if (isPassword) {
    ++m_Host.counters.logins;
    m_Host.guard.Succeeded(name, m_Address);
    m_User = user->name;
    m_Office = user->office;
  } else {
    ++m_Host.counters.wrongPasswords;
    m_Host.guard.Failed(name, m_Address, Clock::now());
    m_Host.log.Warning("wrong name or password", {{"user", name}, {"address", m_Address}});
  }
  if (user) {
    m_Host.desk.NoteLogin(user->name, isPassword, m_Host.clock.Now(), [&host = m_Host](const Fault& fault) {
      if (!fault.empty()) host.log.Error("login not noted", {{"fault", fault}});
    });
  }
  m_Conversation.LoggedIn(isPassword);
  Drive();
}

// --- receiving, as the device calls it

void Session::FindOffer() {
  const auto days = DaysOf(m_Conversation.AskedPeriod(), m_Host.clock.Now());
  m_Host.desk.FindOffer(m_Office, days, [self = shared_from_this()](const Fault& fault, Offer offer) {
    if (self->m_HasEnded) return;
    if (!fault.empty()) return self->Fail(fault);
    self->m_Offer = std::move(offer);
    self->m_Conversation.Offered(self->m_Offer.keys.size());
    self->Drive();
  });
}

bool Session::GiveNext() {
  if (m_Offer.nextReplies < m_Offer.replies.size()) {
    m_Conversation.Give(std::move(m_Offer.replies[m_Offer.nextReplies++]));
    ++m_Received;
    ++m_Host.counters.received;
    return true;
  }
  m_Host.desk.ReadOn(std::move(m_Offer), [self = shared_from_this()](const Fault& fault, Offer offer) {
    if (self->m_HasEnded) return;
    if (!fault.empty()) return self->Fail(fault);
    self->m_Offer = std::move(offer);
    self->Drive();
  });
  return false;
}

// --- sending

void Session::Store() {
  Push push{m_Office, m_Conversation.TakeTexts(), {m_User, m_Address, m_Host.clock.Now()}};
  m_Host.desk.Store(std::move(push), [self = shared_from_this()](const Fault& fault) {
    if (!fault.empty()) return self->m_HasEnded ? void() : self->Fail(fault);
    ++self->m_Sent;
    ++self->m_Host.counters.sent;
    if (self->m_HasEnded) return;
    self->m_Conversation.Stored();
    self->Drive();
  });
}

// --- the end

void Session::CheckTime(Clock::time_point now) {
  if (m_HasEnded) return;
  const bool isStranger = m_User.empty();
  const auto idle =
      isStranger ? std::min<Clock::duration>(m_Host.settings.idle, kStrangerIdle) : m_Host.settings.idle;
  if (m_Silent && now - *m_Silent > idle) return End("silent for too long");
  if (m_Silent && isStranger && now - m_Begin > kStrangerSession) return End("took too long to log in");
  if (now - m_Begin > m_Host.settings.session) End("lasted too long");
}

void Session::Stop() {
  m_IsStopping = true;
  const bool isStranger = m_User.empty();
  if (isStranger || (m_Silent && m_Conversation.IsAtBorder())) End("the server stops");
}

void Session::Fail(const Fault& fault) {
  ++m_Host.counters.faults;
  m_Host.log.Error("storage", {{"fault", fault}});
  End("the storage has failed");
}

void Session::End(const std::string& why) {
  if (m_HasEnded) return;
  m_HasEnded = true;
  const auto lasted = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_Begin).count();
  m_Host.log.Info("session ended", {{"address", m_Address},
                                    {"user", m_User},
                                    {"office", m_Office},
                                    {"received", m_Received},
                                    {"sent", m_Sent},
                                    {"milliseconds", static_cast<std::int64_t>(lasted)},
                                    {"reason", why.empty() ? "quit" : why}});
  asio::error_code ignored;
  m_Socket.close(ignored);
  if (m_LoginTimer) m_LoginTimer->cancel();
  m_Ended();
}

}  // namespace inspector::server

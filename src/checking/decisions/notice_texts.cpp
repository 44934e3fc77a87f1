#include "checking/decisions/notice_texts.h"

#include <algorithm>
#include <string_view>

#include "platform/text.h"

namespace velmora {

namespace {

/// So that what stands behind it has its place in the line, too.
constexpr std::size_t longestName = 40;

/// More than a line shows.
constexpr std::size_t longestSubject = 200;

std::string cut(std::string_view text, std::size_t most) {
  const std::string_view beginning = text::left(text, most);
  return beginning.size() == text.size() ? std::string(text) : std::string(beginning) + "…";
}

std::string counted(std::int64_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string headOf(const MailMessage& message) {
  const std::string from = cut(message.From, longestName);
  const std::string subject = cut(message.Subject, longestSubject);
  if (from.empty() && subject.empty()) return "No sender, no subject";
  return from + (from.empty() || subject.empty() ? "" : ": ") + subject;
}

std::string headline(const AccountNews& news) {
  return cut(news.account, longestName) + ": " + counted(news.count, "new message");
}

/// How many of the things get a line each, so that the rest can be told in one.
std::size_t shownOf(std::size_t things) { return things <= noticeLines ? things : noticeLines - 1; }

void addRest(std::vector<std::string>& lines, std::size_t rest, const std::string& what) {
  if (rest > 0) lines.push_back("and " + counted(static_cast<std::int64_t>(rest), "more " + what));
}

/// A line of each account, followed by its first messages as far as there is room for some of each.
std::vector<std::string> linesOfAccounts(std::span<const AccountNews> news) {
  const std::size_t shown = shownOf(news.size());
  const std::size_t room = news.size() == shown ? noticeLines - shown : 0;
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < shown; ++i) {
    lines.push_back(headline(news[i]));
    const std::size_t heads = std::min(news[i].first.size(), room / shown + (i < room % shown ? 1 : 0));
    lines.insert(lines.end(), news[i].first.begin(), news[i].first.begin() + static_cast<std::ptrdiff_t>(heads));
  }
  addRest(lines, news.size() - shown, "account");
  return lines;
}

std::vector<std::string> linesOfOne(const AccountNews& news) {
  const auto count = static_cast<std::size_t>(news.count);
  const std::size_t shown = std::min(news.first.size(), shownOf(count));
  std::vector<std::string> lines(news.first.begin(), news.first.begin() + static_cast<std::ptrdiff_t>(shown));
  if (shown > 0) addRest(lines, count - shown, "message");
  return lines;
}

}  // namespace

/// A check that was over with the count leaves the marks of the one before it, which have been told. Where messages
/// have gone meanwhile, the marks name some that were there before; where the server gives no identifiers, the growth
/// in number is all that is known.
std::optional<AccountNews> newsOf(const Accounts::Row& account, const MessageRange& messages) {
  if (!account.AcntFetched) return std::nullopt;
  AccountNews news{account.AcntName, 0, {}};
  bool haveIDs = false;
  for (const MailMessage& message : messages) {
    haveIDs = haveIDs || !message.MsgID.empty();
    if (!message.New || std::ranges::binary_search(account.AcntSeenIDs, message.MsgID)) continue;
    ++news.count;
    if (news.first.size() < noticeLines) news.first.push_back(headOf(message));
  }
  if (!haveIDs) news.count = account.AcntNewCount;
  return news.count > 0 ? std::optional(news) : std::nullopt;
}

Notice newsNotice(std::span<const AccountNews> news) {
  Notice notice{.kind = Notice::Kind::New, .summary = headline(news.front())};
  if (news.size() == 1) {
    notice.lines = linesOfOne(news.front());
    return notice;
  }
  std::int64_t count = 0;
  for (const AccountNews& each : news) count += each.count;
  notice.summary = counted(count, "new message") + " in " + std::to_string(news.size()) + " accounts";
  notice.lines = linesOfAccounts(news);
  for (const AccountNews& each : news.first(std::min(news.size(), noticeAccounts)).subspan(1)) {
    notice.choices.push_back(cut(each.account, longestName));
  }
  return notice;
}

Notice failuresNotice(std::span<const AccountFailure> failures) {
  const auto count = static_cast<std::int64_t>(failures.size());
  Notice notice{.kind = Notice::Kind::Failures, .summary = counted(count, "account") + " could not be checked"};
  const std::size_t shown = shownOf(failures.size());
  for (const AccountFailure& each : failures.first(shown)) {
    notice.lines.push_back(cut(each.account, longestName) + ": " + cut(each.reason, longestSubject));
  }
  addRest(notice.lines, failures.size() - shown, "account");
  return notice;
}

}  // namespace velmora

#include "quintara/vault_rights.h"

#include <algorithm>

#include "base/failure.h"

namespace quintara {
namespace {

using Right = EmbeddedVault::Right;

bool IsAll(const Right& right) {
  return right.operation.empty() && right.className.empty();
}

std::string TextOf(const Right& right) {
  if (IsAll(right)) return "all";
  const auto operation = right.operation.empty() ? "all" : right.operation;
  return right.className.empty() ? operation : operation + " on " + right.className;
}

}  // namespace

std::string TextOf(const std::vector<Right>& rights) {
  std::string text;
  for (const auto& right : rights) text += (text.empty() ? "" : ", ") + TextOf(right);
  return text.empty() ? "none" : text;
}

std::vector<EmbeddedVault::User> RequireManager(CommandContext& context) {
  auto users = context.RequireVault().Users();
  const auto* self = FindUser(users, context.User());
  if (self != nullptr && std::ranges::any_of(self->rights, IsAll)) return users;
  throw Failure(failure::kPermissionDenied, "only a user with all rights may do this; '" + context.User() +
                                                "' has: " + (self == nullptr ? "none" : TextOf(self->rights)));
}

const EmbeddedVault::User* FindUser(const std::vector<EmbeddedVault::User>& users, const std::string& login) {
  const auto found = std::ranges::find(users, login, &EmbeddedVault::User::login);
  return found == users.end() ? nullptr : &*found;
}

}  // namespace quintara

#pragma once

namespace quintara::help {

// As in help_texts.h, for the verbs that change components of a work in progress, and for the refresh.

inline constexpr auto kSwitchToLwt =
    R"(The components that a pattern matches are selected, in the order of the tree, and
replaced one after the other; the first that can't be ends it, and those before it stay
replaced. Positions and instance names stay. Only what stands directly under the work
in progress can be replaced; what stands below it goes with it.

A pattern (*, ?; capitals are ignored) is compared with the part number, the instance
name or its last piece, and the path of part numbers; 'part:' or 'product:' in front of
it restricts it to parts or to assemblies, light ones too.

Examples:
  quintara switch-to-lwt TRIAL --select plate
  quintara switch-to-lwt TRIAL --select nut --select 'part:*bolt*' --dry-run
)";

inline constexpr auto kSwitchToProduct =
    R"(As 'quintara switch-to-lwt' does it, the other way round; but a component that isn't in
the vault, or is new, checked out or obsolete there, is passed over with a message.

Examples:
  quintara switch-to-product TRIAL --select 'nut*'
  quintara switch-to-product TRIAL --select '*' --dry-run
)";

inline constexpr auto kReplaceByLatest =
    R"(The light components directly under the work in progress are listed, each with the
revision in the vault that it isn't at yet; those that are ticked are replaced by the
light representation of that. Without --tick a terminal shows the list: the arrows move,
Space ticks, Enter replaces, Esc or q leaves all as it is.

A pattern (*, ?; capitals are ignored) is compared with the part number, the instance
name or its last piece, and the path of part numbers; 'part:' or 'product:' in front of
it restricts it to that kind. One that can tick nothing is refused before anything is
changed.

Examples:
  quintara replace-by-latest TRIAL
  quintara replace-by-latest TRIAL --tick 'rod*' --tick nut
)";

inline constexpr auto kInsert =
    R"(The component stands at the origin; 'quintara retrieve' puts it in its place.

Examples:
  quintara insert TRIAL nut
  quintara insert TRIAL plate@A --document
)";

inline constexpr auto kCheckInsert =
    R"(One box for each component of the object's part number directly under the work in
progress. Its matrix must be a workbook, and a message tells of one from an old version.
Nothing is changed.

Example:
  quintara check-insert TRIAL nut
)";

inline constexpr auto kRefresh =
    R"(The product must be checked in or released, and so must all that it holds. It is checked
out at the newest revisions, its matrix is written anew, and it is checked in again. The
session ends and starts again meanwhile, and some of the user's settings are other
ones until all is done.

Example:
  quintara refresh as1
)";

}  // namespace quintara::help

#pragma once

namespace quintara::help {

// What stands below the options in the help text of the program and of each verb.

inline constexpr auto kProgram = R"(A product is named by its file, or by its part number in the work directory; a
work in progress also without the WIP~~ in front. A STEP file is named by itself.

An object of the vault is named by part number, PART@REVISION or CLASS:ID.

The vault is the folder quintara.vault in the current folder or the nearest one
above it. With a vault the work directory is a folder of its user in there, without
one the current folder. QUINTARA_VAULT, QUINTARA_USER, QUINTARA_WORK and
QUINTARA_LANG in the environment say what the options of those names don't;
QUINTARA_PASSWORD holds the user's password, which a terminal is else asked for.

Exit code: 0 done; 1 something failed or a failure was shown; 2 wrong use,
nothing was changed.

Example, from a STEP assembly to a flat product with every part in its place:
  quintara import as1-oc-214.stp
  quintara matrix as1
  quintara flatten as1
  quintara position as1 --matrix "as1 Matrix.xml" --all-instances
  quintara compare as1 --with as1-oc-214.stp

'quintara VERB --help' tells more about one verb.
)";

inline constexpr auto kCommonOptions =
    "\nEvery verb also has --vault, --user, --work, --lang, --started-first, --yes and\n"
    "--no; 'quintara --help' tells them.\n";

inline constexpr auto kVault = R"(Examples:
  quintara vault init
  quintara vault check
  quintara vault session
)";

inline constexpr auto kVaultInit = R"(A vault is a folder. Whoever works in the folder above it, or anywhere below that,
finds it without naming it. Its first user has all rights and is called admin, or
what --user says; the password is asked for, or is that of QUINTARA_PASSWORD, and
may be left out.

The folder of a vault in a PostgreSQL database keeps the address of that and,
unless --store names another place, the files. To join a database that holds a
vault already, name its store.

Examples:
  quintara vault init
  quintara vault init /srv/gears.vault --user anna
  quintara vault init --database 'postgresql://dbname=gears' --store /srv/gears
)";

inline constexpr auto kVaultCheck = R"(Every file is read and compared with the digest that it was stored under; links,
revisions, states and numbers are looked over. Nothing is changed. Exit code 1 when
something is wrong.

Example:
  quintara vault check
)";

inline constexpr auto kVaultSession =
    R"(Attaches to the vault and the CAD host, reads settings and texts, and tells what it
found. Nothing is changed. Exit code 1 when no session starts, and when a setting
that the commands count on is missing or names a class that isn't there.

Examples:
  quintara vault session
  quintara vault session --user anna --lang DE
)";

inline constexpr auto kLs = R"(Without --all only the newest revision of each. A pattern (*, ?; capitals are
ignored) is compared with the part number, alone and as 'NUMBER - REVISION'. In
front of it 'part:' or 'product:' restricts it to objects without or with
components. Documents are listed where --class names theirs.

Examples:
  quintara ls
  quintara ls 'part:*bolt*' 'rod*'
  quintara ls --all nut
  quintara ls --class Document
)";

inline constexpr auto kShow = R"(An object is named by its part number, which means the newest revision, by part
number and revision (NUT@B), or by class and id (2:14).

Examples:
  quintara show nut
  quintara show nut@A nut@B
)";

inline constexpr auto kCheckIn =
    R"(The files of a product are brought into the work directory, where those that you have
checked out and changed stay as they are; the product is opened, and its matrix is
written from it after you have agreed, stored as a document linked to it, and
checked in with it. A product that another one holds gets no matrix. Then the
object itself is checked in with its changed file, whose light representation is
made anew.

With --load children what lies below the children of the product stays unloaded, as
in an assembly too large to load: the matrices of the children are merged then.

Examples:
  quintara checkin as1
  quintara checkin as1 --yes --load children
  quintara checkin nut.stp bolt.stp
)";

inline constexpr auto kRelease =
    R"(The same as 'quintara checkin', but product and matrix are released. A released object
is changed no more; 'quintara new-release' makes its next revision.

Examples:
  quintara release as1
  quintara release as1 --yes
)";

inline constexpr auto kCheckOut =
    R"(Only a checked-in object can be checked out. Its file is brought into the work directory
in place of the one that is there, with those of all that it holds; files of what
else you have checked out stay as they are. 'quintara checkin' stores what you made
of them.

Examples:
  quintara checkout as1
  quintara checkout nut bolt
)";

inline constexpr auto kNewRelease =
    R"(Only a released object has a next revision. It begins with the file and the links of the
one before, which stays as it is, as does whatever holds that. The file is brought
into the work directory as by 'quintara checkout'.

Example:
  quintara new-release as1
)";

inline constexpr auto kObsolete = R"(Only a released object can become obsolete.

Example:
  quintara obsolete nut@A
)";

inline constexpr auto kChildren =
    R"(One line for each place in the structure: first what the object holds itself, then what
those hold, and so on. 'quintara tree' draws it.

Example:
  quintara children as1
)";

inline constexpr auto kLinks = R"(Without classes these are the documents of the object, its matrix above all.

Examples:
  quintara links as1
  quintara links as1 Document
)";

inline constexpr auto kUnlink = R"(Only the link goes; both objects stay.

Examples:
  quintara unlink as1 4:27
  quintara unlink as1 4:27 --dry-run
)";

inline constexpr auto kSettings =
    R"(Settings of the site hold for everyone, those of a user only for that one. Values are
set one by one; those that aren't named are emptied.

Examples:
  quintara settings
  quintara settings QD TREE_VIEW
  quintara settings QD TREE_VIEW NM_CN_PART_NUMBER,REVISION
)";

inline constexpr auto kUser = R"(Examples:
  quintara user
  quintara user add anna
  quintara user grant anna CHECKIN
)";

inline constexpr auto kUserAdd =
    R"(The password is asked for, or is that of QUINTARA_NEW_PASSWORD, or without a terminal
a line of standard input. It is no argument, since everyone on the machine can read
the arguments of a program.

Examples:
  quintara user add anna
  quintara user add bert --rights all
)";

inline constexpr auto kUserGrant = R"(Operations are CHECKIN, APPROVE, FREEZE, CHECKOUT, NEWRELEASE, CopyFile and
'VIEW OBJECT'; all stands for all of them.

Examples:
  quintara user grant anna CHECKIN
  quintara user grant anna CopyFile 'ZORVA Part'
  quintara user grant anna all
)";

inline constexpr auto kUserRevoke = R"(Only a right that was given can be taken: from a user with all rights, take 'all'
first and give what is left.

Examples:
  quintara user revoke anna CHECKIN
  quintara user revoke anna all
)";

inline constexpr auto kImport = R"(Every part becomes 'PART NUMBER.stp', every assembly 'PART NUMBER.ZVAProduct',
and both get a light representation, 'PART NUMBER.lwt'. Names that can't be used
are changed, always in the same way, and listed.

With a vault all of it goes there, checked in; into the work directory go only the
matrices, which each assembly gets as a document linked to it, unless --matrix says
root or none. What is in the vault already is found by its part number: it stays as
it is when its content is the same, and gets a new revision when it isn't, an
assembly when its own list of children or their positions changed. The import
is refused when something changed is new, checked out or obsolete. Without a
vault the files go into the work directory. Either all is done or nothing.

Examples:
  quintara import as1-oc-214.stp
  quintara import as1-oc-214.stp --dry-run
  quintara import gearbox.stp --work gearbox --replace
)";

inline constexpr auto kTree = R"(What isn't the name of a file is an object of the vault, where there is one, and else a
product of the work directory. A structure of the vault has one line for each
distinct component, with the number of its instances.

Examples:
  quintara tree as1
  quintara tree as1.ZVAProduct --depth 1
  quintara tree as1-oc-214.stp
)";

inline constexpr auto kMatrix = R"(The matrix is an XML file that holds the whole tree, with the position of each
instance in its parent.

Examples:
  quintara matrix as1
  quintara matrix as1 -o old.xml --replace
)";

inline constexpr auto kWip = R"(The product must be checked in or released. Its structure is reviewed: each component
is left out, or comes in as a light representation or a document; what stands below
one that comes in is kept as it is. The work in progress is made in the CAD host,
placed by the product's matrix, and saved as 'WIP~~NAME.ZVAProduct' in the work
directory. It is then compared with what was asked for: what is missing, or still at
the origin, is told.

Patterns are applied from left to right. A pattern (*, ?; capitals are ignored) is
compared with the part number, the node's text, and the path of part numbers, such as
as1/rod-assembly/nut, but not with instance names, since a node stands for all
instances below its parent; in front of it 'part:' or 'product:' restricts it. The
product itself is named by '.' alone. Each object is marked once, at its first free
node: a part number that stands twice among the components of a fresh work in progress
costs their neighbours. --none takes out all nodes that match, with all below them.

Without a pattern, a terminal shows the structure: arrows move, Space changes a
component, and the keys of all else are told below it.

Examples:
  quintara wip as1
  quintara wip as1 --light l-bracket --document plate --all-instances --name TRIAL
  quintara wip as1 --light 'part:*' --none '*bolt*' --dry-run
)";

inline constexpr auto kRetrieve =
    R"(The matrix comes from the vault; components of one part number are placed in the order
of the matrix. The work in progress is named by its file or its part number, with or
without WIP~~.

Example:
  quintara retrieve TRIAL
)";

inline constexpr auto kFlatten = R"(The flat product is called WIP~~NAME. Each chosen part number is one component
of it, at the origin; 'quintara position' puts them where they belong.

Without a pattern every part is taken as a document. With patterns only what
they choose is taken; they are applied from left to right. Below a component
that is taken nothing else can be chosen.

A pattern (*, ?; capitals are ignored) is compared with the part number, the
instance name, and the path of part numbers, such as as1/rod-assembly/nut. In
front of it 'part:' or 'product:' restricts it to components without or with
children.

Examples:
  quintara flatten as1
  quintara flatten as1 --document 'part:*' --light nut --light bolt
  quintara flatten as1 --name rods --light rod-assembly --document nut
  quintara flatten as1 --light '*' --none '*bracket*'
)";

inline constexpr auto kPosition = R"(Three ways:
  --all-instances    one component for each instance in the matrix, named with
                     its full path; copies are made as needed. For a product
                     fresh from 'quintara flatten'.
  --first-instances  one component for each part number, at its first instance,
                     named with its full path. Likewise for a fresh one.
  neither            the components that are there are put back in place, those
                     of one part number in the order of the matrix.
The product is saved only when every component could be placed.

Examples:
  quintara position as1 --matrix "as1 Matrix.xml" --all-instances
  quintara position "WIP~~as1.ZVAProduct" --matrix "as1 Matrix.xml"
)";

inline constexpr auto kScatter = R"(The order of the components stays. The same seed gives the same positions.

Examples:
  quintara scatter as1
  quintara scatter as1 --seed 7 --distance 200
)";

inline constexpr auto kCompare = R"(Components are told apart by the full path that 'quintara position' gave them as
names. Each position is compared with the one that the geometry kernel itself
computes for that instance of the original; the deviation is how far a point of
the assembly may be off, at most 1e-9 of the assembly's size. Exit code 1 when a
component is out of place, missing or surplus.

Example:
  quintara compare as1 --with as1-oc-214.stp
)";

inline constexpr auto kExport = R"(Light components become facets in STEP.

Examples:
  quintara export WIP~~as1 flat.stp
  quintara export as1 as1.glb --replace
)";

inline constexpr auto kRender = R"(Examples:
  quintara render as1 -o as1.png
  quintara render as1-oc-214.stp WIP~~as1 -o both.png --caption original --caption flat
)";

}  // namespace quintara::help

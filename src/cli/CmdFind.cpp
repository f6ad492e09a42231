// orvanta-cli find KIND TEXT: the lines the object search window lists for a
// kind (airport, vor, ndb, ils, int, fix, victor, jet) and a search text.
#include <ostream>

#include "cli/Cli.h"
#include "app/ProgramState.h"
#include "core/AppState.h"
#include "core/Runtime.h"
#include "database/FrmFind.h"
#include "database/NavDatabase.h"

namespace orv::cli {

namespace {
constexpr const char* kFindUsage = "usage: orvanta-cli find airport|vor|ndb|ils|int|fix|victor|jet TEXT";
}

int CmdFind(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.size() < 2) {
    err << "find: expected a kind and a search text\n" << kFindUsage << "\n";
    return 2;
  }
  std::optional<FindKind> kind = FindKindFromName(args[0]);
  if (!kind) {
    err << "find: unknown kind '" << args[0] << "'\n" << kFindUsage << "\n";
    return 2;
  }
  // The words of the text as one text, as typed into the window's field.
  std::string text = args[1];
  for (std::size_t i = 2; i < args.size(); ++i) text += " " + args[i];

  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  [[maybe_unused]] AppState& state = s.Core;
  NavDatabase& db = s.Db;
  for (const std::string& line : FindObjects(db, *kind, Utf8ToLatin1(text)).Lines) out << Latin1ToUtf8(line) << '\n';
  return 0;
}

}  // namespace orv::cli

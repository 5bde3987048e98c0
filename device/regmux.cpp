// regmux: the registry client of the simulated device.
//
//   regmux get KEY          a value: "value TEXT"; a branch: its children, "dir NAME" or "key NAME"
//   regmux create KEY       makes an empty value; one that exists is left as it is
//   regmux set KEY VALUE    only of a key that was created
//   regmux delete KEY       the value, and the whole branch below it
//   regmux commit           keeps what is shown now, all of it or nothing
//   regmux apply            has nothing to do here
//
// Status 0, or 1 with one line on standard error, or 2 for a call that it does not understand.
// Every call is journalled, whatever its outcome. Other behaviours, for tests, are rows of the
// table of faults and functions of this file; see kBehaviours.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "device/database.h"

namespace {

constexpr char kDatabase[] = "/etc/regmux/registry.db";
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;

struct Call {
  std::string verb;
  std::string key;
  std::string value;
  std::size_t arguments = 0;               // that followed the verb
  pid_t caller = 0;                        // the process that ran us, past any shell
  std::string id;                          // of its row in the journal
  rlim_t file_size_limit = RLIM_INFINITY;  // for the registry while it is written
  int signal_to_caller = 0;                // once the call has ended; 0: none
};

int Fail(const Call &call, const std::string &reason) {
  std::fprintf(stderr, "regmux: %s: %s\n", call.verb.c_str(), reason.c_str());
  return kFailed;
}

// ---- The registry ----

// No file grows beyond the limit while this lives: what a full file system does to a writer.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t limit) {
    signal(SIGXFSZ, SIG_IGN);  // The write then fails instead.
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limited = {limit, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  FileSizeLimit(const FileSizeLimit &) = delete;
  FileSizeLimit &operator=(const FileSizeLimit &) = delete;
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_ = {};
};

// All keys below KEY lie between these two: '0' follows '/'.
std::string BranchBegin(const Call &call) {
  return call.key + "/";
}
std::string BranchEnd(const Call &call) {
  return call.key + "0";
}

void Print(const char *kind, const std::string &text) {
  std::fputs(kind, stdout);
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fputc('\n', stdout);
}

int GetBranch(Database &database, const Call &call) {
  std::string listed;
  const auto print_child = [&](sqlite3_stmt *row) {
    const std::string path = Column(row, 0).substr(call.key.size() + 1);
    const std::string name = path.substr(0, path.find('/'));
    if (name != listed) {
      Print(name == path ? "key " : "dir ", name);
      listed = name;
    }
  };
  if (!database.Run("SELECT key FROM current WHERE key >= ? AND key < ?",
                    {BranchBegin(call), BranchEnd(call)}, print_child)) {
    return Fail(call, database.Error());
  }
  return listed.empty() ? Fail(call, "no such key") : kDone;
}

int Get(Database &database, const Call &call) {
  bool found = false;
  const auto print_value = [&](sqlite3_stmt *row) {
    Print("value ", Column(row, 0));
    found = true;
  };
  if (!database.Run("SELECT value FROM current WHERE key = ?", {call.key}, print_value)) {
    return Fail(call, database.Error());
  }
  return found ? kDone : GetBranch(database, call);
}

int Create(Database &database, const Call &call) {
  const bool created = database.Run("INSERT OR IGNORE INTO current VALUES (?, x'')", {call.key});
  return created ? kDone : Fail(call, database.Error());
}

int Set(Database &database, const Call &call) {
  if (!database.Run("UPDATE current SET value = ?2 WHERE key = ?1", {call.key, call.value})) {
    return Fail(call, database.Error());
  }
  return database.Changes() > 0 ? kDone : Fail(call, "no such key");
}

int Delete(Database &database, const Call &call) {
  if (!database.Run("DELETE FROM current WHERE key = ? OR (key >= ? AND key < ?)",
                    {call.key, BranchBegin(call), BranchEnd(call)})) {
    return Fail(call, database.Error());
  }
  return database.Changes() > 0 ? kDone : Fail(call, "no such key");
}

int Commit(Database &database, const Call &call) {
  const bool committed = database.Transaction([&] {
    return database.Run("DELETE FROM committed") &&
           database.Run("INSERT INTO committed SELECT key, value FROM current");
  });
  return committed ? kDone : Fail(call, database.Error());
}

int Apply(Database & /*database*/, const Call & /*call*/) {
  return kDone;
}

struct Verb {
  const char *name;
  std::size_t arguments;
  int (*run)(Database &database, const Call &call);
};
constexpr Verb kVerbs[] = {{"get", 1, Get},       {"create", 1, Create}, {"set", 2, Set},
                           {"delete", 1, Delete}, {"commit", 0, Commit}, {"apply", 0, Apply}};

int Answer(Database &database, const Call &call) {
  for (const Verb &verb : kVerbs) {
    if (call.verb == verb.name && call.arguments == verb.arguments) {
      const FileSizeLimit limit(call.file_size_limit);
      return verb.run(database, call);
    }
  }
  std::fputs("regmux: usage: get|create|delete KEY, set KEY VALUE, commit, apply\n", stderr);
  return kMisused;
}

// ---- Behaviours other than its own ----

struct Fault {
  std::string behaviour;
  std::string argument;
};

// The client answers nothing and does nothing; the argument is the status.
std::optional<int> FailInstead(const std::string &argument, Call &call) {
  Fail(call, "failed");
  return std::atoi(argument.c_str());
}

// The argument is printed in place of the answer.
std::optional<int> PrintInstead(const std::string &argument, Call & /*call*/) {
  std::fwrite(argument.data(), 1, argument.size(), stdout);
  return kDone;
}

// The client dies by the signal of that number and does nothing.
std::optional<int> Die(const std::string &argument, Call & /*call*/) {
  const rlimit no_core = {0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  raise(std::atoi(argument.c_str()));
  return kFailed;
}

// The call takes so many milliseconds longer; less when the device goes away in the meantime.
std::optional<int> Delay(const std::string &argument, Call & /*call*/) {
  constexpr int kStepMilliseconds = 20;
  int left = std::atoi(argument.c_str());
  for (; left > 0 && access(kDatabase, F_OK) == 0; left -= kStepMilliseconds) {
    usleep(static_cast<useconds_t>(std::min(left, kStepMilliseconds)) * 1000);
  }
  return std::nullopt;
}

// Nothing is said on standard error.
std::optional<int> BeSilent(const std::string & /*argument*/, Call & /*call*/) {
  if (std::freopen("/dev/null", "w", stderr) == nullptr) {
    return kFailed;
  }
  return std::nullopt;
}

// No file of the registry can grow beyond so many bytes.
std::optional<int> LimitFileSize(const std::string &argument, Call &call) {
  call.file_size_limit = std::strtoul(argument.c_str(), nullptr, 10);
  return std::nullopt;
}

// The program that ran the client gets the signal of that number once the call has ended.
std::optional<int> SignalCaller(const std::string &argument, Call &call) {
  call.signal_to_caller = std::atoi(argument.c_str());
  return std::nullopt;
}

// To add a behaviour: a function and its row here, and its method in simdevice.py. A function
// changes how the call goes on, or ends it by giving its status.
struct Behaviour {
  const char *name;
  std::optional<int> (*run)(const std::string &argument, Call &call);
};
constexpr Behaviour kBehaviours[] = {{"fail", FailInstead},
                                     {"print", PrintInstead},
                                     {"die", Die},
                                     {"delay", Delay},
                                     {"silent", BeSilent},
                                     {"file size limit", LimitFileSize},
                                     {"signal caller", SignalCaller}};

std::optional<int> Misbehave(const std::vector<Fault> &faults, Call &call) {
  std::optional<int> status;
  for (const Fault &fault : faults) {
    for (const Behaviour &behaviour : kBehaviours) {
      if (!status && fault.behaviour == behaviour.name) {
        status = behaviour.run(fault.argument, call);
      }
    }
  }
  return status;
}

// ---- The call ----

// The first ancestor that is not a shell: programs run their commands through one.
pid_t Caller() {
  pid_t pid = getppid();
  while (true) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    const std::string stat{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t name_end = stat.rfind(')');
    const bool is_shell = stat.find("(sh)") != std::string::npos;
    if (!is_shell || name_end == std::string::npos) {
      return pid;
    }
    pid = std::atoi(stat.c_str() + name_end + sizeof(") S"));
  }
}

Call ReadCall(int argc, char **argv) {
  Call call;
  call.verb = argc > 1 ? argv[1] : "";
  call.key = argc > 2 ? argv[2] : "";
  call.value = argc > 3 ? argv[3] : "";
  call.arguments = argc > 2 ? static_cast<std::size_t>(argc) - 2 : 0;
  call.caller = Caller();
  return call;
}

// Enters the call in the journal and gives the faults that it meets.
bool BeginCall(Database &database, const std::string &args, Call &call,
               std::vector<Fault> &faults) {
  const char *path = std::getenv("LD_LIBRARY_PATH");
  const auto meet = [&](sqlite3_stmt *row) {
    if (sqlite3_column_int(row, 2) != 0) {
      faults.push_back({Column(row, 0), Column(row, 1)});
    }
  };
  return database.Transaction([&] {
    const bool entered = database.Run(
        "INSERT INTO calls (args, ld_library_path, caller) VALUES (?, ?, CAST(? AS INTEGER))",
        {args, path == nullptr ? Blob() : Blob(path), std::to_string(call.caller)});
    call.id = std::to_string(database.LastId());
    return entered && database.Run(
                          "UPDATE faults SET seen = seen + 1"
                          " WHERE instr(verbs, ',' || ? || ',') AND (key IS NULL OR key = ?)"
                          " RETURNING behaviour, argument, nth IS NULL OR nth = seen",
                          {call.verb, call.key}, meet);
  });
}

bool EndCall(Database &database, const Call &call, int status) {
  return database.Run("UPDATE calls SET status = CAST(? AS INTEGER) WHERE id = CAST(? AS INTEGER)",
                      {std::to_string(status), call.id});
}

}  // namespace

int main(int argc, char **argv) {
  std::string args;
  for (int i = 1; i < argc; ++i) {
    args.append(argv[i]).push_back('\0');
  }
  Call call = ReadCall(argc, argv);
  Database database;
  std::vector<Fault> faults;
  if (!database.Open(kDatabase) || !BeginCall(database, args, call, faults)) {
    return Fail(call, "no registry");
  }
  const std::optional<int> ended = Misbehave(faults, call);
  const int status = ended ? *ended : Answer(database, call);
  std::fflush(stdout);
  EndCall(database, call, status);
  if (call.signal_to_caller != 0) {
    kill(call.caller, call.signal_to_caller);
  }
  return status;
}

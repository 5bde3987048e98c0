-- What the simulated device keeps of its registry, and of how its client is to behave. Keys and
-- values are bytes, so that nothing is ever decoded on the way.

-- `current` is what the client shows; `committed` is what the device starts with.
CREATE TABLE committed (key BLOB PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID;
CREATE TABLE current (key BLOB PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID;

-- The journal: a row when a call begins, its status when it ends (NULL: it never did).
CREATE TABLE calls (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  args BLOB NOT NULL,         -- the arguments, each followed by a NUL
  ld_library_path BLOB,       -- NULL: not in the environment
  caller INTEGER NOT NULL,    -- the process that ran the client, shells left out
  status INTEGER
);

-- Behaviours other than the client's own; regmux.cpp lists them.
CREATE TABLE faults (
  id INTEGER PRIMARY KEY,
  verbs TEXT NOT NULL,        -- ",create,set,": the calls it is for
  key BLOB,                   -- the key it is for; NULL: any
  nth INTEGER,                -- which of those calls, counted from 1; NULL: each
  seen INTEGER NOT NULL DEFAULT 0,
  behaviour TEXT NOT NULL,
  argument BLOB NOT NULL
);

-- Presence and felt reports.

create table version (
  number integer not null
);
insert into version (number) values (1);

-- A monitor that reported itself. Times are in milliseconds since 1970 began.
create table client (
  macid blob not null primary key,
  version blob not null,
  seen integer not null,
  runs integer not null
) without rowid;
create index client_seen on client (seen);

-- A place with felt reports. "reports" counts all that ever came.
create table map (
  id integer primary key,
  name blob not null unique,
  reports integer not null,
  reported integer not null
);

create table report (
  map integer not null references map (id) on delete cascade,
  number integer not null,
  received integer not null,
  record blob not null,
  primary key (map, number)
) without rowid;

-- Presence and felt reports.

create table version (
  number bigint not null
);
insert into version (number) values (1);

-- A monitor that reported itself. Times are in milliseconds since 1970 began.
create table client (
  macid bytea not null primary key,
  version bytea not null,
  seen bigint not null,
  runs bigint not null
);
create index client_seen on client (seen);

-- A place with felt reports. "reports" counts all that ever came.
create table map (
  id bigint generated always as identity primary key,
  name bytea not null unique,
  reports bigint not null,
  reported bigint not null
);

create table report (
  map bigint not null references map (id) on delete cascade,
  number bigint not null,
  received bigint not null,
  record bytea not null,
  primary key (map, number)
);

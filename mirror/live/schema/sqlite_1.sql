-- Events as the feeds have given them. Times are in milliseconds since 1970 began.

create table version (
  number integer not null
);
insert into version (number) values (1);

-- One row: the store's own name, by which another one in its place is noticed, the number of its last change, and the
-- time of the newest feed that was taken up.
create table state (
  identity blob not null,
  number integer not null,
  time_of_data integer not null
);
insert into state (identity, number, time_of_data) values (randomblob(16), 0, 0);

-- What a source has last said of an event, under the id that it prefers. "seen" is when the text was made that says so,
-- "gone" is 1 when the source has taken the event back, "changed" is the number of the change that wrote the row.
create table event (
  source blob not null,
  id blob not null,
  other_ids blob not null,
  origin_time integer not null,
  updated integer not null,
  seen integer not null,
  gone integer not null,
  latitude real not null,
  longitude real not null,
  depth real,
  magnitude real,
  place blob not null,
  network blob not null,
  kind blob not null,
  changed integer not null,
  primary key (source, id)
) without rowid;
create index event_origin_time on event (origin_time);
create index event_changed on event (changed);

-- What a source has said of an event before.
create table revision (
  number integer primary key autoincrement,
  source blob not null,
  id blob not null,
  other_ids blob not null,
  origin_time integer not null,
  updated integer not null,
  seen integer not null,
  gone integer not null,
  latitude real not null,
  longitude real not null,
  depth real,
  magnitude real,
  place blob not null,
  network blob not null,
  kind blob not null
);
create index revision_origin_time on revision (origin_time);

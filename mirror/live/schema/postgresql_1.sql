-- Events as the feeds have given them. Times are in milliseconds since 1970 began.

create table version (
  number bigint not null
);
insert into version (number) values (1);

-- One row: the store's own name, by which another one in its place is noticed, the number of its last change, and the
-- time of the newest feed that was taken up.
create table state (
  identity bytea not null,
  number bigint not null,
  time_of_data bigint not null
);
insert into state (identity, number, time_of_data) values (decode(md5(random()::text || clock_timestamp()::text), 'hex'), 0, 0);

-- What a source has last said of an event, under the id that it prefers. "seen" is when the text was made that says so,
-- "gone" is 1 when the source has taken the event back, "changed" is the number of the change that wrote the row.
create table event (
  source bytea not null,
  id bytea not null,
  other_ids bytea not null,
  origin_time bigint not null,
  updated bigint not null,
  seen bigint not null,
  gone bigint not null,
  latitude double precision not null,
  longitude double precision not null,
  depth double precision,
  magnitude double precision,
  place bytea not null,
  network bytea not null,
  kind bytea not null,
  changed bigint not null,
  primary key (source, id)
);
create index event_origin_time on event (origin_time);
create index event_changed on event (changed);

-- What a source has said of an event before.
create table revision (
  number bigint generated always as identity primary key,
  source bytea not null,
  id bytea not null,
  other_ids bytea not null,
  origin_time bigint not null,
  updated bigint not null,
  seen bigint not null,
  gone bigint not null,
  latitude double precision not null,
  longitude double precision not null,
  depth double precision,
  magnitude double precision,
  place bytea not null,
  network bytea not null,
  kind bytea not null
);
create index revision_origin_time on revision (origin_time);

-- The details of the felt reports. Only those of putc name a zip code.

create table detail (
  id integer primary key autoincrement,
  received integer not null,
  map blob not null,
  zip blob,
  record blob not null
);

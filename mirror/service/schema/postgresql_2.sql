-- The details of the felt reports. Only those of putc name a zip code.

create table detail (
  id bigint generated always as identity primary key,
  received bigint not null,
  map bytea not null,
  zip bytea,
  record bytea not null
);

-- A store as the first version of the tables left it.

create schema borvane;
create table version (number bigint not null);
insert into version (number) values (1);
create table client (macid bytea not null primary key, version bytea not null, seen bigint not null, runs bigint not null);
create index client_seen on client (seen);
insert into client values ('\x353334313837', '\x323335', 1700000000000, 12);
insert into client values ('\x39', '\x323334', 1600000000000, 1);
create table map (id bigint generated always as identity primary key, name bytea not null unique, reports bigint not null,
  reported bigint not null);
insert into map overriding system value values (1, '\x5061726b6669656c642c204341', 3, 1699999000000);
insert into map overriding system value values (2, '\x4361f16f6e', 1, 1699999000001);
select setval(pg_get_serial_sequence('map', 'id'), 2);
create table report (map bigint not null references map (id) on delete cascade, number bigint not null,
  received bigint not null, record bytea not null, primary key (map, number));
insert into report values (1, 2, 1699998000000, '\x3233357c417c33357c332e357c317c307c3933343531');
insert into report values (1, 3, 1699999000000, '\x3233357c427c7c7c307c307c80ff');
insert into report values (2, 1, 1699999000001, '\x');

-- A store as the first version of the tables left it.

create table version (number integer not null);
insert into version (number) values (1);
create table client (macid blob not null primary key, version blob not null, seen integer not null, runs integer not null)
  without rowid;
create index client_seen on client (seen);
insert into client values (x'353334313837', x'323335', 1700000000000, 12);
insert into client values (x'39', x'323334', 1600000000000, 1);
create table map (id integer primary key, name blob not null unique, reports integer not null, reported integer not null);
insert into map values (1, x'5061726b6669656c642c204341', 3, 1699999000000);
insert into map values (4, x'4361f16f6e', 1, 1699999000001);
create table report (map integer not null references map (id) on delete cascade, number integer not null,
  received integer not null, record blob not null, primary key (map, number)) without rowid;
insert into report values (1, 2, 1699998000000, x'3233357c417c33357c332e357c317c307c3933343531');
insert into report values (1, 3, 1699999000000, x'3233357c427c7c7c307c307c80ff');
insert into report values (4, 1, 1699999000001, x'');

SET NAMES latin1;
INSERT INTO t VALUES ('ç');SET NAMES utf8mb4;INSERT INTO t VALUES (_binary 'ÿ\0;''x');ÿ;
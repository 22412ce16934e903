// A schema that holds every kind of object, column and value that a dump may meet.
#pragma once

#include <string>
#include <vector>

namespace kestrelon::testing {

inline const std::vector<std::string>& every_kind_of_object() {
  static const std::vector<std::string> statements = {
      "SET SESSION sql_mode='NO_AUTO_VALUE_ON_ZERO,ALLOW_INVALID_DATES', time_zone='+00:00'",
      // Numbers.
      "CREATE TABLE numeros (id INT PRIMARY KEY, t TINYINT, l TINYINT(1), s SMALLINT UNSIGNED,"
      " m MEDIUMINT, b BIGINT, u BIGINT UNSIGNED ZEROFILL, d DECIMAL(65,30), f FLOAT, g "
      "FLOAT(7,3), r DOUBLE, q DOUBLE(12,2), y YEAR, flag BIT(1), bits BIT(64))",
      "INSERT INTO numeros VALUES (0,-128,7,65535,-8388608,-9223372036854775808,"
      "18446744073709551615,-12345678901234567890123456789012345.123456789012345678901234567891,"
      "0.1,3.333,0.1e0+0.2e0,0.1,2026,b'1',0xFFFFFFFFFFFFFFFF),"
      "(1,127,-1,0,0,0,0,0,16777217,-0.001,1.7976931348623157e308,-1.25,1901,b'0',0),"
      "(2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL),"
      "(-5,1,1,1,1,1,1,0.000000000000000000000000000001,3.4028234e38,1,2.2250738585072014e-308,"
      "99999.99,0,b'1',b'101')",
      // Dates, far, zero and with fractions.
      "CREATE TABLE datas (id INT PRIMARY KEY, d DATE, h TIME(6), dt DATETIME(6), ts TIMESTAMP(6)"
      " NULL)",
      "INSERT INTO datas VALUES (1,'9999-12-31','838:59:59.000000','9999-12-31 23:59:59.999999',"
      "'2038-01-19 03:14:07.999999'),(2,'0000-00-00','-838:59:59','0000-00-00 00:00:00',"
      "'1970-01-01 00:00:01'),(3,'2024-00-31','00:00:00.000001','2026-03-09 10:20:30.5',NULL),"
      "(4,'2023-02-31',NULL,'1899-12-29 06:00:00','0000-00-00 00:00:00'),"
      "(5,'0001-01-01','-00:00:01.5','0000-01-01 00:00:00','2018-11-04 02:30:00')",
      // Texts of several character sets.
      "CREATE TABLE textos (id INT PRIMARY KEY, v VARCHAR(200), l VARCHAR(50) CHARACTER SET latin1,"
      " c CHAR(10) CHARACTER SET ucs2, j VARCHAR(50) CHARACTER SET sjis, e ENUM('sim','não','a,b'),"
      " s SET('a','b','ç'), n JSON, t LONGTEXT)",
      "INSERT INTO textos VALUES (1,'O''Brien \\\\ \"x\" `y`','ação €','Ω','日本','não','a,ç',"
      "'{\"preço\": 1.5}','a\\r\\nb\\nc\\rd\\0e\\Zf'),(2,'NULL','True','','','a,b','','[]',"
      "'-- não; é /* comentário */ # '),(3,'😀 ok','1,5',NULL,NULL,NULL,NULL,NULL,NULL),"
      "(4,'END;\\nDELIMITER ;\\nDROP TABLE x;','R$ 1,00','  x','ソ','sim','b','0',"
      "REPEAT('ção;', 3000))",
      "INSERT IGNORE INTO textos (id, e) VALUES (5, 'inexistente')",
      // Bytes and shapes.
      "CREATE TABLE bytes (id INT PRIMARY KEY, b BINARY(4), v VARBINARY(300), l LONGBLOB,"
      " p POINT, g GEOMETRY, u UUID, i INET6)",
      "INSERT INTO bytes VALUES (1,0x00FF27,'',REPEAT(0x00275C0AFF,2000),ST_PointFromText("
      "'POINT(-46.6 -23.5)', 4326),ST_GeomFromText('POLYGON((0 0,1 0,1 1,0 0))'),"
      "'123e4567-e89b-12d3-a456-426655440000','fe80::1'),(2,NULL,NULL,'',NULL,NULL,NULL,NULL)",
      // Columns that a plain INSERT does not reach.
      "CREATE TABLE escondidas (id INT AUTO_INCREMENT PRIMARY KEY, a INT, oculta INT INVISIBLE"
      " DEFAULT 5, soma INT AS (a + 1) VIRTUAL, guardada VARCHAR(20) AS (CONCAT('n', a)) STORED,"
      " KEY (guardada)) AUTO_INCREMENT=77",
      "INSERT INTO escondidas (id, a, oculta) VALUES (0, 1, 10), (3, NULL, NULL), (9, 5, 5)",
      "CREATE TABLE só_gerada (a INT AS (1) VIRTUAL, b INT INVISIBLE DEFAULT 3)",
      "INSERT INTO só_gerada () VALUES (), ()",
      // Tables that need each other.
      "SET SESSION foreign_key_checks=0",
      "CREATE TABLE ciclo_a (id INT PRIMARY KEY, b INT, FOREIGN KEY (b) REFERENCES ciclo_b (id))",
      "CREATE TABLE ciclo_b (id INT PRIMARY KEY, a INT, FOREIGN KEY (a) REFERENCES ciclo_a (id))",
      "INSERT INTO ciclo_a VALUES (1, 2), (2, 99)", "INSERT INTO ciclo_b VALUES (2, 1)",
      "SET SESSION foreign_key_checks=1",
      "CREATE TABLE conferida (a INT CHECK (a > 0), b INT DEFAULT (1 + 2), c TIMESTAMP DEFAULT "
      "CURRENT_TIMESTAMP ON UPDATE CURRENT_TIMESTAMP) COMMENT='linha\\n; DROP TABLE x; --'",
      "SET SESSION check_constraint_checks=0",
      "INSERT INTO conferida VALUES (-1, 1, '2020-01-01'), (1, 2, '2020-01-01')",
      "SET SESSION check_constraint_checks=1",
      "CREATE TABLE partida (a INT, KEY (a)) ENGINE=MyISAM PARTITION BY HASH (a) PARTITIONS 3",
      "INSERT INTO partida VALUES (1), (2), (3), (NULL)",
      "CREATE SEQUENCE seq START WITH 5 INCREMENT BY 2 MAXVALUE 1000 CYCLE", "DO NEXTVAL(seq)",
      "CREATE TABLE com_seq (a INT DEFAULT NEXTVAL(seq), b INT)",
      // Names that try to leave their quotes.
      "CREATE TABLE `a\nDROP TABLE numeros;\nDROP TABLE datas;\n-- x` (`c``d\n';*/` INT, `--` INT)",
      "INSERT INTO `a\nDROP TABLE numeros;\nDROP TABLE datas;\n-- x` VALUES (1, 2)",
      "CREATE TABLE `'; DROP TABLE numeros; #` (a INT)", "CREATE TABLE `/*!50000 x` (a INT)",
      "CREATE TABLE `ação 日本` (`preço` INT)",
      // Views, one on a later one, one on a function that asks a view.
      "CREATE TABLE tmp_base (id INT, nome VARCHAR(10))",
      "CREATE VIEW z_base AS SELECT id, nome FROM tmp_base",
      "CREATE FUNCTION dobro(a INT) RETURNS INT READS SQL DATA RETURN a * (SELECT COUNT(*) FROM "
      "a_sobre_z)",
      "CREATE VIEW a_sobre_z AS SELECT id, nome FROM z_base WHERE 1 = 0"
      " UNION SELECT 1, 'ç;' ORDER BY 1",
      "CREATE SQL SECURITY INVOKER VIEW `v\n;x` AS SELECT dobro(2) AS `d\ne`",
      // Routines.
      "CREATE PROCEDURE p_comentada(IN a INT, OUT b VARCHAR(10))\nrotulo: BEGIN\n-- não; pare: "
      "it's\n  # outro \"\n  /* bloco; */\nDECLARE x INT DEFAULT 0;\nIF a > 0 THEN\nSET b = "
      "'a;\nb ç \\\\';\nEND IF;\nLEAVE rotulo;\nEND rotulo",
      "CREATE PROCEDURE p_uma() COMMENT 'uma ;; linha' SELECT 1 -- fim",
      "CREATE AGGREGATE FUNCTION agrega(x INT) RETURNS INT BEGIN DECLARE t INT DEFAULT 0; DECLARE "
      "CONTINUE HANDLER FOR NOT FOUND RETURN t; LOOP FETCH GROUP NEXT ROW; SET t = t + x; END LOOP;"
      " END",
      "SET SESSION sql_mode='NO_BACKSLASH_ESCAPES,ANSI_QUOTES'",
      "CREATE DEFINER='outro'@'%' FUNCTION \"f modos\"() RETURNS VARCHAR(20) DETERMINISTIC RETURN "
      "CONCAT('\\', \"a\\\"())",
      "CREATE FUNCTION \"a\\\"() RETURNS INT DETERMINISTIC RETURN 1",
      "SET SESSION sql_mode='ORACLE'", "CREATE PACKAGE pacote AS FUNCTION um RETURN INT; END",
      "CREATE PACKAGE BODY pacote AS FUNCTION um RETURN INT AS BEGIN RETURN 1; END; END",
      "SET SESSION sql_mode=''",
      // A text of another client's character set.
      "SET SESSION character_set_client=latin1, collation_connection=latin1_swedish_ci",
      "EXECUTE IMMEDIATE CONVERT(0x4352454154452050524F434544555245206C6174696E6128292053454C45"
      "43542027C3A727 USING utf8mb4)",
      "CREATE PROCEDURE ascii_latina() SELECT 1", "SET NAMES utf8mb4",
      "ALTER DATABASE CHARACTER SET latin1",
      "CREATE PROCEDURE de_outra_base(a VARCHAR(10)) SELECT a",
      "ALTER DATABASE CHARACTER SET utf8mb4",
      // Triggers in an order of their own, events.
      "CREATE TRIGGER t1 BEFORE INSERT ON numeros FOR EACH ROW SET NEW.t = 1",
      "CREATE TRIGGER t0 BEFORE INSERT ON numeros FOR EACH ROW PRECEDES t1 BEGIN /* a; */ SET "
      "@x = 'ç''\n;;'; -- b;\nEND",
      "CREATE TRIGGER t2 AFTER DELETE ON datas FOR EACH ROW DELETE FROM textos WHERE id = OLD.id",
      "SET SESSION time_zone='-03:00'",
      "CREATE EVENT noite ON SCHEDULE EVERY 1 DAY STARTS '2030-01-01 02:00:00' ON COMPLETION "
      "PRESERVE DISABLE COMMENT 'à noite;' DO BEGIN\nDELETE FROM numeros;\nEND"};
  return statements;
}

}  // namespace kestrelon::testing

--  Criado por: x

SET FOREIGN_KEY_CHECKS=0;

CREATE TABLE IF NOT EXISTS `t` (
  `a` int
) ENGINE=InnoDB;
INSERT INTO `t` VALUES 
('1', NULL),('2', 'a;\r\n');
COMMIT;
CREATE PROCEDURE `p`()
BEGIN
  SELECT 1;
END;
DROP VIEW x;SELECT 1
  ;
x
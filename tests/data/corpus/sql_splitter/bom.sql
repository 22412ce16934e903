delimiter ''
SELECT ' x '' y '';
/*M!999999\- sandbox */ SELECT 2''